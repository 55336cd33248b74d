// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/storefollower.h"

#include <vexdesk/icharts.h>

#include <QtWidgets/QWidget>

#include <optional>

class QLabel;
class QLineEdit;
class QStackedWidget;
class QTreeView;

namespace vexdesk {

class FittedLabel;
class SeriesFilter;
class SeriesTreeModel;

/// The stored series as a tree with a line to look for one: what is typed into either stands in the
/// line. Follows the store while it is shown. User-interface thread only.
class SeriesTree final : public QWidget
{
    Q_OBJECT

public:
    /// `root` is the store's.
    explicit SeriesTree(const QString& root, QWidget* parent = nullptr);
    ~SeriesTree() override;

    /// Makes the series the current one, now or as soon as it is listed. Nothing is opened.
    void setCurrent(const SeriesName& series);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user wants to see this series.
    void opened(const vexdesk::SeriesName& series);
    /// The user is done with the tree: the keys may go back to where they were.
    void left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setUpLine();
    void setUpView();
    void setUpMessages();
    void layOut();
    void connectParts();
    void setStored(const QList<StoredSeries>& stored);
    void showProblems(const QStringList& problems);
    void fitProblem();
    void showWhatIsFound();
    QString whyNothingIsThere() const;
    void expandFound(const QModelIndex& parent, int first, int last);
    void look();
    void open(const QModelIndex& index);
    void openFound();
    void goToFound();
    bool takeLineKey(const QKeyEvent& event);
    bool takeTreeKey(QKeyEvent& event);

    const QString m_root;
    bool m_isRootMissing = false;
    StoreFollower m_follower;
    SeriesTreeModel* m_model;
    SeriesFilter* m_found; // the rows that fit what is looked for
    QLineEdit* m_line;
    QTreeView* m_view;
    QLabel* m_message;
    FittedLabel* m_problem;
    QStackedWidget* m_pages;
    std::optional<SeriesName> m_awaited; // to be made the current one
    bool m_isListed = false;
    bool m_isOpenAwaited = false; // what is found is opened as soon as the store is listed
};

} // namespace vexdesk
