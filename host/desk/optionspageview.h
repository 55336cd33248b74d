// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtWidgets/QScrollArea>

class IOptionsPage;

namespace vexdesk {

/// The place of one page in the options dialog. It makes the page's widget when it is first shown,
/// and scrolls it where the dialog is too small for it.
///
/// All calls that the dialog makes into a page while it is open go through here: an exception that
/// leaves one is told to the user and stays here.
class OptionsPageView final : public QScrollArea
{
    Q_OBJECT

public:
    /// `page` must live as long as the view; `title` names it to the user.
    OptionsPageView(IOptionsPage* page, const QString& title, QWidget* parent = nullptr);
    ~OptionsPageView() override;

    /// Lets a page that was shown store its values. False when it threw; the user knows by then.
    bool apply();

    /// Tells a page that was shown that its widget goes. Once; to be called before the view is
    /// destroyed.
    void finish();

Q_SIGNALS:
    /// The page's widget, or a note in the place of one that could not be made, has come.
    void filled();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fill();
    /// Why the page gave no widget; null when it did.
    Result<QWidget*> makeWidget(QWidget* parent);
    QWidget* makeNote(const QString& text);
    void setContent(QWidget* content);

    enum class State {
        NotShown,
        Made, ///< the page's widget is there
        Done  ///< finished, or no widget could be made
    };

    IOptionsPage* m_page;
    QString m_title;
    State m_state = State::NotShown;
};

} // namespace vexdesk
