// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QToolButton>

namespace vexdesk {

/// A line of text in the status bar that opens something: it looks like a link, Tab reaches it, and
/// Space and Return open it. Where there is no room for the whole text its end is left out; a long
/// text never makes the window wider. An ampersand in the text is to be doubled.
class StatusLink : public QToolButton
{
    Q_OBJECT

public:
    explicit StatusLink(QWidget* parent = nullptr);
    ~StatusLink() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSize sizeOf(int textWidth) const;
};

} // namespace vexdesk
