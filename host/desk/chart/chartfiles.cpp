// SPDX-License-Identifier: MIT
#include "desk/chart/chartfiles.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartcolors.h"
#include "desk/chart/chartpainter.h"
#include "desk/chart/wallclock.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSaveFile>
#include <QtGui/QPainter>
#include <QtSvg/QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::ChartFiles)
};

struct Columns
{
    bool hasValue = false;
    bool hasOpenInterest = false;
};

QStringList headingsOf(const Columns& columns)
{
    QStringList names{Text::tr("Дата"), Text::tr("Время"), Text::tr("Откр."), Text::tr("Макс."),
                      Text::tr("Мин."), Text::tr("Закр."), Text::tr("Объём")};
    if (columns.hasValue)
        names.append(Text::tr("Объём в деньгах"));
    if (columns.hasOpenInterest)
        names.append(Text::tr("Откр. интерес"));
    return names;
}

// When a bar ends; a day, week or month begins on its first day and has no time.
QStringList timeOf(const Candle& candle, Timeframe timeframe)
{
    if (timeframe == Timeframe::Day)
        return {dateText(wallTime(candle.day)), QString()};
    if (timeframe > Timeframe::Day)
        return {dateText(candle.begin), QString()};
    return {dateText(candle.end), wallClock(candle.end).toString(QStringLiteral("hh:mm:ss"))};
}

QString numberOf(double number, int decimals)
{
    return numberText(number, decimals).replace(u'.', QLocale().decimalPoint());
}

// Whether an amount has no more digits than these. A sum has also what adding has lost.
bool isWhole(const Candle& candle, double power)
{
    constexpr double mostExact = 9007199254740992.0; // every whole number up to it is a double
    const double value = candle.bar.value;
    if (std::abs(value * power) >= mostExact)
        return true;
    const double lost = std::abs(value) * std::numeric_limits<double>::epsilon() *
                        static_cast<double>(candle.count - 1);
    return std::abs(std::round(value * power) / power - value) <= lost;
}

// As the store has it: the digits of the prices, or more where an amount has more.
int moneyDecimals(const std::vector<Candle>& candles, int decimals)
{
    constexpr int least = 2;
    constexpr int most = 15; // more are not told apart by a double
    int needed = std::max(least, decimals);
    for (const Candle& candle : candles) {
        while (needed < most && !isWhole(candle, std::pow(10.0, needed)))
            ++needed;
    }
    return needed;
}

void paintOn(QPaintDevice& device, const ChartLayout& chart, const ChartColors& colors)
{
    QPainter painter(&device);
    paintChart(painter, chart, colors);
}

QByteArray pngOf(const ChartLayout& chart, const ChartColors& colors, double scale)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    chartImage(chart, colors, scale).save(&buffer, "PNG");
    return bytes;
}

// Not every Qt makes a text of markup of the title that it is given.
QByteArray withTitle(QByteArray svg, const QString& title)
{
    const qsizetype root = svg.indexOf("<svg");
    const qsizetype at = root < 0 ? -1 : svg.indexOf('>', root);
    if (at < 0 || title.isEmpty())
        return svg;
    return svg.insert(at + 1, "\n<title>" + title.toHtmlEscaped().toUtf8() + "</title>");
}

QByteArray svgOf(const ChartLayout& chart, const ChartColors& colors)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(chart.size.toSize());
    svg.setViewBox(QRectF(QPointF(), chart.size));
    constexpr int dotsPerInch = 96; // letters of points keep the size that they were laid out with
    svg.setResolution(dotsPerInch);
    svg.setTitle(QString());
    paintOn(svg, chart, colors);
    return withTitle(bytes, chart.fullTitle);
}

// A disk that fills up takes a part at first, and says why when it takes nothing any more.
bool isWritten(QIODevice& file, const QByteArray& bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

} // namespace

QString candlesAsText(const std::vector<Candle>& candles, const CandleKind& kind, int decimals)
{
    Columns columns;
    for (const Candle& candle : candles) {
        columns.hasValue |= candle.bar.value != 0;
        columns.hasOpenInterest |= candle.bar.openInterest != 0;
    }
    const int ofMoney = moneyDecimals(candles, decimals);
    QString text = headingsOf(columns).join(u'\t') + u'\n';
    for (const Candle& candle : candles) {
        const Bar& bar = candle.bar;
        QStringList line = timeOf(candle, kind.shown);
        for (const double price : {bar.open, bar.high, bar.low, bar.close})
            line.append(numberOf(price, decimals));
        line.append(QString::number(bar.volume));
        if (columns.hasValue)
            line.append(numberOf(bar.value, ofMoney));
        if (columns.hasOpenInterest)
            line.append(QString::number(bar.openInterest));
        text += line.join(u'\t') + u'\n';
    }
    return text;
}

QImage chartImage(const ChartLayout& chart, const ChartColors& colors, double scale)
{
    const QSizeF size = chart.size * scale;
    QImage image(std::max(1, static_cast<int>(std::ceil(size.width()))),
                 std::max(1, static_cast<int>(std::ceil(size.height()))),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(colors.background);
    paintOn(image, chart, colors);
    return image;
}

Outcome saveChart(const ChartLayout& chart, const ChartColors& colors, double scale,
                  const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const bool isPicture = suffix == QStringLiteral("png");
    if (!isPicture && suffix != QStringLiteral("svg"))
        return Failure{Text::tr("График сохраняется в файлах с расширением .png или .svg: \"%1\"")
                           .arg(QDir::toNativeSeparators(path))};
    const QByteArray bytes = isPicture ? pngOf(chart, colors, scale) : svgOf(chart, colors);
    QSaveFile file(path);
    if (bytes.isEmpty())
        return Failure{
            Text::tr("Не удалось нарисовать картинку \"%1\"").arg(QDir::toNativeSeparators(path))};
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && isWritten(file, bytes) &&
        file.commit())
        return {};
    return Failure{Text::tr("Не удалось записать файл \"%1\": %2")
                       .arg(QDir::toNativeSeparators(path), file.errorString())};
}

} // namespace vexdesk
