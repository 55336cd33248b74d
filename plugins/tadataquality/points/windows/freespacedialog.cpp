// SPDX-License-Identifier: MIT
#include "freespacedialog.h"

#include "pointwords.h"
#include "prunepreview.h"
#include "restoresettings.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include <algorithm>

FreeSpaceDialog::FreeSpaceDialog(const QList<vexdesk::RestorePointRecord>& points,
                                 const QSet<QString>& running, const vexdesk::RestoreLimits& limits,
                                 QWidget* parent)
    : QDialog(parent)
    , m_points(points)
    , m_running(running)
    , m_keep(new QSpinBox)
    , m_megabytes(new QSpinBox)
    , m_preview(new QLabel)
{
    constexpr int mostMegabytes = 1'000'000;
    setWindowTitle(tr("Освободить место"));
    m_keep->setObjectName(QStringLiteral("keep"));
    m_keep->setRange(1, std::max(1, static_cast<int>(points.size())));
    m_keep->setValue(limits.keep);
    m_megabytes->setObjectName(QStringLiteral("megabytes"));
    m_megabytes->setRange(0, mostMegabytes);
    m_megabytes->setSuffix(tr(" МБ"));
    m_megabytes->setValue(
        static_cast<int>(std::min<qint64>(tadata::toMegabytes(limits.bytes), mostMegabytes)));
    m_preview->setObjectName(QStringLiteral("preview"));
    m_preview->setWordWrap(true);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("&Отмена"));
    m_remove = buttons->addButton(tr("&Удалить точки"), QDialogButtonBox::AcceptRole);
    m_remove->setObjectName(QStringLiteral("remove"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const form = new QFormLayout(this);
    form->addRow(tr("Оставить &новейших точек:"), m_keep);
    form->addRow(tr("и не больше &места:"), m_megabytes);
    form->addRow(m_preview);
    form->addRow(buttons);
    for (const QSpinBox* const box : {m_keep, m_megabytes})
        connect(box, &QSpinBox::valueChanged, this, &FreeSpaceDialog::showPreview);
    showPreview();
}

FreeSpaceDialog::~FreeSpaceDialog() = default;

vexdesk::RestoreLimits FreeSpaceDialog::limits() const
{
    return {m_keep->value(), tadata::fromMegabytes(m_megabytes->value())};
}

void FreeSpaceDialog::showPreview()
{
    const tadata::PrunePreview preview = tadata::previewOfPruning(m_points, m_running, limits());
    m_remove->setEnabled(preview.points > 0);
    m_preview->setText(
        preview.points == 0
            ? tr("Удалять нечего: самая новая точка остаётся всегда.")
            : tr("Будет удалено точек: %L1, освободится %2. То, что они хранят, вернуть потом "
                 "будет нельзя. Сами данные при этом не меняются.")
                  .arg(preview.points)
                  .arg(tadata::sizeText(preview.bytes)));
}
