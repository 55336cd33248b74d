#include "store/bardescription.h"

#include "store/textline.h"

#include <QtCore/QTextStream>

namespace {

constexpr QChar separator = u';';

void appendTime(tadata::TextLine& line, const QTime& time)
{
    if (!time.isValid())
        return;
    line.appendTwoDigits(time.hour());
    line.appendTwoDigits(time.minute());
    line.appendTwoDigits(time.second());
}

} // namespace

QTextStream& operator<<(QTextStream& stream, const BarDescription& bar)
{
    tadata::TextLine line;
    appendTime(line, bar.time);
    line.append(separator);
    for (const decimal& price : {bar.open, bar.high, bar.low, bar.close}) {
        line.append(price);
        line.append(separator);
    }
    line.append(bar.volume);
    line.append(separator);
    line.append(bar.value);
    line.append(separator);
    line.append(qint64(bar.openInterest));
    line.append(QChar(u'\n'));
    return stream << line.text();
}
