// SPDX-License-Identifier: MIT
#include "desk/chart/barscopier.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QPromise>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace vexdesk {

namespace {

void copyDays(QPromise<CopiedBars>& promise, const BarsStretch& stretch)
{
    BarsCopy copy(stretch);
    promise.setProgressRange(0, copy.dayCount());
    for (int day = 1; copy.takeDay(); ++day) {
        if (promise.isCanceled())
            return;
        promise.setProgressValue(day);
    }
    promise.addResult(copy.finish());
}

} // namespace

BarsCopier::BarsCopier(QWidget& widget)
    : m_widget(widget)
{
    connect(&m_work, &QFutureWatcherBase::progressValueChanged, this, &BarsCopier::progressed);
    connect(&m_work, &QFutureWatcherBase::finished, this, [this] {
        Q_EMIT progressed();
        if (!m_work.isCanceled())
            take(m_work.result());
    });
}

BarsCopier::~BarsCopier()
{
    m_work.cancel(); // the pool waits for its end
}

void BarsCopier::copy(const BarsStretch& stretch)
{
    m_work.cancel();
    m_work.setFuture(QFuture<CopiedBars>()); // nothing of it is told any more
    BarsCopy copy(stretch);
    m_timeframe = stretch.timeframe;
    m_dayCount = copy.dayCount();
    if (copy.needsFiles()) {
        m_work.setFuture(QtConcurrent::run(&m_pool, copyDays, stretch));
        Q_EMIT progressed();
        return;
    }
    while (copy.takeDay())
        continue;
    take(copy.finish());
}

void BarsCopier::giveUp()
{
    if (!isAtWork())
        return;
    m_work.cancel();
    m_work.setFuture(QFuture<CopiedBars>());
    Q_EMIT progressed();
    Q_EMIT told(tr("Копирование баров отменено"));
}

QString BarsCopier::progress() const
{
    return tr("Копирование баров: день %1 из %2 (Esc — отменить)")
        .arg(m_work.progressValue())
        .arg(m_dayCount);
}

void BarsCopier::take(const CopiedBars& copied)
{
    if (copied.isTooMuch) {
        Q_EMIT told(tr("Бары не скопированы: их больше %1. Отметьте меньший отрезок или выберите "
                       "больший таймфрейм.")
                        .arg(groupedText(QString::number(mostCopied))));
        return;
    }
    if (!copied.missing.isEmpty() && !isWantedWithoutMissing(copied)) {
        Q_EMIT told(tr("Копирование баров отменено"));
        return;
    }
    if (copied.count == 0) {
        Q_EMIT told(tr("Копировать нечего: в этом отрезке нет баров"));
        return;
    }
    QGuiApplication::clipboard()->setText(copied.text);
    QString report =
        tr("Скопировано баров: %1, таймфрейм: %2")
            .arg(groupedText(QString::number(copied.count)), timeframeText(m_timeframe));
    if (!copied.missing.isEmpty())
        report += tr("; не скопировано дней: %1").arg(copied.missing.size());
    Q_EMIT told(report);
}

bool BarsCopier::isWantedWithoutMissing(const CopiedBars& copied)
{
    Q_EMIT told(QString()); // that days are read would stand under the question
    QMessageBox box(QMessageBox::Warning, tr("Копирование баров"),
                    tr("Бары прочитаны не за все дни. Не удалось прочитать дней: %1, первый из "
                       "них — %2.\n\n%3\n\nСкопировать остальные?")
                        .arg(QString::number(copied.missing.size()),
                             dateText(wallTime(copied.missing.constFirst())), copied.firstMissing),
                    QMessageBox::Cancel, &m_widget);
    const QAbstractButton* const others = box.addButton(tr("Скопировать"), QMessageBox::AcceptRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == others;
}

} // namespace vexdesk
