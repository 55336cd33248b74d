// SPDX-License-Identifier: MIT
#include "restorepointsform.h"

#include "restoresettings.h"

#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSpinBox>

#include <algorithm>

namespace {

constexpr int mostPoints = 10'000;
constexpr int mostMegabytes = 10'000'000;

int shownMegabytes(qint64 bytes)
{
    return static_cast<int>(std::min<qint64>(tadata::toMegabytes(bytes), mostMegabytes));
}

} // namespace

RestorePointsForm::RestorePointsForm(QWidget* parent)
    : QWidget(parent)
    , m_keep(new QSpinBox)
    , m_megabytes(new QSpinBox)
    , m_explanation(new QLabel)
{
    m_keep->setObjectName(QStringLiteral("keep"));
    m_keep->setRange(0, mostPoints);
    m_keep->setSpecialValueText(tr("не создавать"));
    m_megabytes->setObjectName(QStringLiteral("megabytes"));
    m_megabytes->setRange(0, mostMegabytes);
    m_megabytes->setSuffix(tr(" МБ"));
    m_explanation->setWordWrap(true);
    m_explanation->setObjectName(QStringLiteral("explanation"));
    auto* const form = new QFormLayout(this);
    form->addRow(tr("&Хранить точек восстановления:"), m_keep);
    form->addRow(tr("&Места для них, не больше:"), m_megabytes);
    form->addRow(m_explanation);
    connect(m_keep, &QSpinBox::valueChanged, this, &RestorePointsForm::explain);
    explain();
}

RestorePointsForm::~RestorePointsForm() = default;

void RestorePointsForm::show(const vexdesk::RestoreLimits& limits)
{
    m_shown = limits;
    m_keep->setValue(limits.keep);
    m_megabytes->setValue(shownMegabytes(limits.bytes));
}

vexdesk::RestoreLimits RestorePointsForm::limits() const
{
    vexdesk::RestoreLimits limits;
    const bool isKeepAsItWas = m_keep->value() == std::min(m_shown.keep, mostPoints);
    limits.keep = isKeepAsItWas ? m_shown.keep : m_keep->value();
    const bool isSizeAsItWas = m_megabytes->value() == shownMegabytes(m_shown.bytes);
    limits.bytes = isSizeAsItWas ? m_shown.bytes : tadata::fromMegabytes(m_megabytes->value());
    return limits;
}

void RestorePointsForm::explain()
{
    m_megabytes->setEnabled(m_keep->value() > 0);
    m_explanation->setText(
        m_keep->value() > 0
            ? tr("Команды, которые меняют данные, в том числе tadata, сохраняют прежние файлы. "
                 "Самые старые точки удаляются, когда их больше, чем указано; самая новая "
                 "остаётся всегда.")
            : tr("Без точек восстановления импорт, правку и удаление отменить нельзя."));
}
