#include "store/bardescription.h"

#include <QtCore/QTextStream>

QTextStream& operator<<(QTextStream& stream, const BarDescription& bar)
{
    constexpr char separator = ';';
    return stream << bar.time.toString(QStringLiteral("hhmmss")) << separator << bar.open.toString()
                  << separator << bar.high.toString() << separator << bar.low.toString()
                  << separator << bar.close.toString() << separator << bar.volume << separator
                  << bar.value.toString() << separator << bar.openInterest << '\n';
}
