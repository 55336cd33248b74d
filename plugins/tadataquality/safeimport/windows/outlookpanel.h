// SPDX-License-Identifier: MIT
#pragma once

#include "importoutlook.h"

#include <QtWidgets/QWidget>

class DayStrip;
class QLabel;
class QTreeView;
namespace tadata {
class ProblemsModel;
}

/// Says what an import would do: whether it comes to its end, what becomes of the days, and what is
/// wrong or odd in the files. User-interface thread.
class OutlookPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit OutlookPanel(QWidget* parent = nullptr);
    ~OutlookPanel() override;

    void showOutlook(const tadata::ImportOutlook& outlook,
                     const std::vector<tadata::FileOutlook>& files);
    /// Nothing is known: a sentence in place of all of it.
    void showNothing(const QString& why);
    /// What is shown is not what is chosen any more; another one is coming.
    void showWaiting(int percent);
    /// Whether an import can begin.
    bool isGood() const { return m_isGood; }
    const tadata::ProblemsModel& problems() const { return *m_problems; }

Q_SIGNALS:
    /// The user wants to see a line of a file.
    void lineChosen(const QString& file, qint64 line);

private:
    void showVerdict(const QString& text, bool isGood);
    void showLegend();
    void chooseProblem(const QModelIndex& index);

    QLabel* m_verdict;
    DayStrip* m_strip;
    QLabel* m_legend;
    QLabel* m_sentences;
    QTreeView* m_tree;
    tadata::ProblemsModel* m_problems;
    bool m_isGood = false;
};
