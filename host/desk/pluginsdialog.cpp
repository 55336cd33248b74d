// SPDX-License-Identifier: MIT
#include "desk/pluginsdialog.h"

#include "desk/pluginmodel.h"

#include "ui_pluginsdialog.h"

#include <QtCore/QDir>
#include <QtGui/QScreen>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace vexdesk {

PluginsDialog::PluginsDialog(const QList<PluginRecord>& records, const QStringList& directories,
                             QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::PluginsDialog>())
    , m_model(new PluginModel(records, this))
{
    m_ui->setupUi(this);
    m_ui->table->setModel(m_model);
    const auto loaded =
        std::count_if(records.cbegin(), records.cend(), [](const PluginRecord& record) {
            return record.state == PluginRecord::State::Loaded;
        });
    m_ui->summary->setText(tr("Найдено файлов: %1, загружено модулей: %2, отклонено: %3")
                               .arg(QString::number(records.size()), QString::number(loaded),
                                    QString::number(records.size() - loaded)));
    connect(m_ui->table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { showDetails(current.row()); });
    resizeToContents();

    if (records.isEmpty()) {
        QStringList lines{tr("В этих каталогах модулей нет:")};
        for (const QString& directory : directories)
            lines.append(QDir::toNativeSeparators(directory));
        m_ui->details->setPlainText(lines.join(u'\n'));
    } else {
        m_ui->table->selectRow(0);
    }
    m_ui->table->setFocus();
}

PluginsDialog::~PluginsDialog() = default;

void PluginsDialog::showDetails(int row)
{
    if (row < 0)
        return;
    const PluginRecord& record = m_model->record(row);
    QStringList lines;
    const auto add = [&lines](const QString& title, const QString& value) {
        if (!value.isEmpty())
            lines.append(tr("%1: %2").arg(title, value));
    };
    add(tr("Файл"), QDir::toNativeSeparators(record.path));
    add(tr("Состояние"), PluginModel::stateText(record.state));
    add(tr("Причина отказа"), record.reason);
    add(tr("Подробности"), record.details);
    add(tr("Код"), record.code);
    add(tr("Название"), record.name);
    add(tr("Версия"), record.version);
    add(tr("Автор"), record.author);
    add(tr("Описание"), record.description);
    m_ui->details->setPlainText(lines.join(u'\n'));
}

void PluginsDialog::resizeToContents()
{
    QTableView* const table = m_ui->table;
    const QFontMetrics metrics = fontMetrics();
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->verticalHeader()->setDefaultSectionSize(metrics.height() * 3 / 2);
    table->resizeColumnsToContents();
    // As wide as the table asks for, as long as the screen has the room.
    const QSize most = screen()->availableSize() * 0.8;
    const int beside =
        table->verticalScrollBar()->sizeHint().width() + 4 * metrics.averageCharWidth();
    wrapSentences(most.width() - beside);
    table->resizeRowsToContents();
    const int content = table->horizontalHeader()->length() + beside;
    const int least = 80 * metrics.averageCharWidth();
    resize(std::min(std::max(content, least), most.width()),
           std::min(34 * metrics.lineSpacing(), most.height()));
}

void PluginsDialog::wrapSentences(int room)
{
    const QTableView* const table = m_ui->table;
    int rest = room - table->horizontalHeader()->length();
    for (const int column : {PluginModel::DescriptionColumn, PluginModel::ReasonColumn})
        rest += table->columnWidth(column);
    const int least = 25 * fontMetrics().averageCharWidth();
    // The shorter one gives what it does not need to the other.
    const int description =
        std::min(table->columnWidth(PluginModel::DescriptionColumn), std::max(rest / 3, least));
    m_ui->table->setColumnWidth(PluginModel::DescriptionColumn, description);
    m_ui->table->setColumnWidth(PluginModel::ReasonColumn,
                                std::min(table->columnWidth(PluginModel::ReasonColumn),
                                         std::max(rest - description, least)));
}

} // namespace vexdesk
