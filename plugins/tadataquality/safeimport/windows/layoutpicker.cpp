// SPDX-License-Identifier: MIT
#include "layoutpicker.h"

#include "compactbox.h"
#include "fieldforms.h"
#include "textformats.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

using tadata::TextFormat;

namespace {

// In the letters of the user's language, as the titles of the others are.
QString titleOf(const QString& pattern)
{
    const QString letters = LayoutPicker::tr("гмдчмс");
    QString title;
    for (const QChar letter : pattern) {
        const qsizetype place = QStringLiteral("yMdhms").indexOf(letter);
        title += place >= 0 && place < letters.size() ? letters.at(place) : letter;
    }
    return title;
}

// The forms that the wizard offers, under their titles, then the others that a guess knows.
void offer(QComboBox* box, const QList<TextFormat>& formats, const QStringList& known)
{
    for (const TextFormat& format : formats)
        box->addItem(format.title, format.pattern);
    for (const QString& pattern : known) {
        if (box->findData(pattern) < 0)
            box->addItem(titleOf(pattern), pattern);
    }
}

} // namespace

LayoutPicker::LayoutPicker(QWidget* parent)
    : QWidget(parent)
    , m_separator(new QComboBox(this))
    , m_date(new QComboBox(this))
    , m_time(new QComboBox(this))
    , m_timeframe(new QComboBox(this))
    , m_header(new QCheckBox(tr("&Заголовок"), this))
{
    m_separator->setObjectName(QStringLiteral("separator"));
    m_date->setObjectName(QStringLiteral("dateFormat"));
    m_time->setObjectName(QStringLiteral("timeFormat"));
    m_timeframe->setObjectName(QStringLiteral("timeframe"));
    m_header->setObjectName(QStringLiteral("header"));
    m_header->setToolTip(tr("Первая строка файла — названия столбцов"));
    offer(m_separator, tadata::separators(tadata::FormatPage::Import), {});
    m_separator->addItem(tr("табуляция"), QStringLiteral("\t"));
    m_separator->addItem(tr("черта (|)"), QStringLiteral("|"));
    offer(m_date, tadata::dateFormats(), tadata::knownDateForms());
    offer(m_time, tadata::timeFormats(), tadata::knownTimeForms());
    m_timeframe->addItem(tr("1 минута"), vexdesk::minuteTimeframe);
    m_timeframe->addItem(tr("1 секунда"), vexdesk::secondTimeframe);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    const auto add = [&](const QString& text, QComboBox* box) {
        auto* const label = new QLabel(text);
        label->setBuddy(box);
        box->setPlaceholderText(tr("не выбран"));
        constexpr int shortest = 9;
        tadata::makeCompact(box, shortest);
        layout->addWidget(label);
        layout->addWidget(box, 1);
        connect(box, &QComboBox::activated, this, [this, box] {
            m_touched = box;
            Q_EMIT layoutChosen();
        });
    };
    add(tr("&Разделитель:"), m_separator);
    add(tr("&Дата:"), m_date);
    add(tr("&Время:"), m_time);
    add(tr("&Бар:"), m_timeframe);
    layout->addWidget(m_header);
    connect(m_header, &QCheckBox::clicked, this, [this] {
        m_touched = m_header;
        Q_EMIT layoutChosen();
    });
    clear();
}

LayoutPicker::~LayoutPicker() = default;

void LayoutPicker::clear()
{
    for (QComboBox* const box : {m_separator, m_date, m_time, m_timeframe})
        box->setCurrentIndex(-1);
    m_header->setChecked(false);
}

void LayoutPicker::show(const tadata::FileLayout& layout)
{
    const ImportDetails& details = layout.details;
    choose(m_separator, details.separator, details.separator);
    choose(m_date, details.dateFormat, details.dateFormatTitle);
    choose(m_time, details.timeFormat, details.timeFormatTitle);
    m_timeframe->setCurrentIndex(m_timeframe->findData(details.timeframe));
    m_header->setChecked(details.firstLineIsHeader);
}

// A profile may name what no box offers.
void LayoutPicker::choose(QComboBox* box, const QString& pattern, const QString& title)
{
    if (!pattern.isEmpty() && box->findData(pattern) < 0)
        box->addItem(title, pattern);
    box->setCurrentIndex(pattern.isEmpty() ? -1 : box->findData(pattern));
}

tadata::GivenLayout LayoutPicker::given(tadata::GivenLayout before) const
{
    if (m_touched == m_separator)
        before.separator = m_separator->currentData().toString();
    else if (m_touched == m_date)
        before.dateFormat = m_date->currentData().toString();
    else if (m_touched == m_time)
        before.timeFormat = m_time->currentData().toString();
    else if (m_touched == m_timeframe)
        before.timeframe = m_timeframe->currentData().toInt();
    else if (m_touched == m_header)
        before.hasHeader = m_header->isChecked();
    return before;
}
