// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barscopy.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QObject>
#include <QtCore/QThreadPool>

class QWidget;

namespace vexdesk {

/// Puts the bars of a stretch into the clipboard: all of them, or nothing of which the user does
/// not know. Days that are not in memory are read in a thread of its own; until then the clipboard
/// stays as it is. User-interface thread only.
class BarsCopier final : public QObject
{
    Q_OBJECT

public:
    /// `widget` is what the user is asked in front of.
    explicit BarsCopier(QWidget& widget);
    ~BarsCopier() override;

    /// In place of what is being copied, if anything is.
    void copy(const BarsStretch& stretch);
    void giveUp();
    bool isAtWork() const { return m_work.isRunning(); }
    /// How far it has come, for the user.
    QString progress() const;

Q_SIGNALS:
    void progressed();
    /// What has become of it, for the user.
    void told(const QString& text);

private:
    void take(const CopiedBars& copied);
    bool isWantedWithoutMissing(const CopiedBars& copied);

    QWidget& m_widget;
    QFutureWatcher<CopiedBars> m_work;
    int m_dayCount = 0;
    Timeframe m_timeframe = Timeframe::Minute;
    QThreadPool m_pool; // an import that fills the global one does not keep it waiting
};

} // namespace vexdesk
