// SPDX-License-Identifier: MIT
#pragma once

#include "dayofbars.h"
#include "dayspreview.h"

#include <atomic>

namespace tadata {

/// An import whose bars come in among those that are stored. It changes nothing at all where any of
/// the stored days has a line that is no bar, or a sum that does not fit.
class MergePreview final : public DaysPreview
{
public:
    /// Of the lines of one ticker, where the details have a column for it. Compares the bars of
    /// days if they are to be counted, see CheckedSeries::countsBars. Reads stored days into
    /// `room`, which must outlive it and may be that of others; once `stop`, which may be null, is
    /// set it fails.
    MergePreview(const QString& input, const ImportDetails& details, const ImportWays& ways,
                 const QDir& dir, const QString& ticker, bool countsBars, StoredDay* room,
                 const std::atomic<bool>* stop);

    vexdesk::Outcome take(const FileLine& line, const DayInFile& day, bool beginsRun) override;
    vexdesk::Result<std::vector<CheckedDay>> finish() override;

private:
    struct Day
    {
        const DayInFile* file = nullptr;
        bool comesAgain = false; ///< the file has several runs of it
        // Why the import would end; null for nothing.
        QString badLine = {}; ///< of what is stored
        QString wrongSum = {};
        CheckedDay after = {};
    };
    using Days = std::map<QDate, Day>;
    using Group = std::map<QDate, FileDay>;

    vexdesk::Outcome beginRun(const QDate& date, const DayInFile& file);
    vexdesk::Outcome endRun();
    vexdesk::Outcome lookAtDaysThatComeAgain();
    vexdesk::Outcome lookAt(Group& group);
    vexdesk::Outcome collect(Group& group) const;
    vexdesk::Outcome lookAt(const QDate& date, const FileDay& bars);
    void lookAtBars(const QByteArray& content, CheckedDay& day) const;
    static void lookAtSums(const QByteArray& content, Day& day);
    bool stopAtFirst(QString Day::*fault);

    QString m_input;
    ImportDetails m_details;
    ImportWays m_ways;
    QDir m_dir;
    QString m_ticker;
    bool m_countsBars;
    StoredDay* m_stored; ///< the day that was read last
    const std::atomic<bool>* m_stop;
    Days m_days;
    QDate m_date; ///< of the run that is open
    bool m_isCollecting = false;
    FileDay m_run;
};

} // namespace tadata
