// SPDX-License-Identifier: MIT
#include "desk/startpage.h"

#include "desk/chart/seriesname.h"
#include "desk/commandbutton.h"
#include "desk/commands.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icore.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace vexdesk {

namespace {

// Device-independent pixels.
constexpr int pageWidth = 640;
constexpr int columnWidth = 400; // of two
constexpr int pageMargin = 32;
constexpr int logoSize = 64;

QLabel* makeLabel(const QString& text, double scale, bool bold)
{
    auto* const label = new QLabel(text);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* makeSelectableText(const QString& name)
{
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

StartPage::StartPage(QSet<QByteArray> ownCommands, QWidget* parent)
    : QScrollArea(parent)
    , m_ownCommands(std::move(ownCommands))
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);

    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(pageMargin, pageMargin, pageMargin, pageMargin);
    layout->addWidget(makeHeader());
    layout->addSpacing(pageMargin / 2);
    m_columns = new QHBoxLayout;
    m_columns->setSpacing(pageMargin);
    for (Column* const column : {&m_commands, &m_recent}) {
        column->layout = new QVBoxLayout;
        column->layout->setSpacing(2);
        m_columns->addLayout(column->layout, 1);
        m_columns->setAlignment(column->layout, Qt::AlignTop);
    }
    layout->addLayout(m_columns);
    m_hint = makeSelectableText(QStringLiteral("pluginHint"));
    m_hint->setContentsMargins(0, pageMargin / 2, 0, 0);
    m_hint->hide();
    layout->addWidget(m_hint);
    layout->addStretch();
    QLabel* const dataPath = makeSelectableText(QStringLiteral("dataPath"));
    dataPath->setText(tr("Данные и настройки: %1")
                          .arg(QDir::toNativeSeparators(ICore::getDir(QString(), false).path())));
    dataPath->setForegroundRole(QPalette::PlaceholderText);
    layout->addWidget(dataPath);

    setAlignment(Qt::AlignHCenter);
    setWidget(page);

    const ActionManager* const manager = ActionManager::instance();
    m_rebuildSoon.setSingleShot(true);
    connect(manager->menuBar(), &CommandContainer::changed, &m_rebuildSoon,
            qOverload<>(&QTimer::start));
    connect(&m_rebuildSoon, &QTimer::timeout, this, &StartPage::rebuild);
    connect(manager, &ActionManager::actionChanged, this, &StartPage::updateEnabled);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { bringIntoView(now); });
    rebuild();
}

StartPage::~StartPage()
{
    // The focus leaves the rows while they go, when this is a page no more.
    disconnect(qApp, nullptr, this, nullptr);
}

void StartPage::Column::clear()
{
    // The row that was clicked may still be at work: what goes is not deleted on the spot.
    for (QWidget* const row : std::as_const(rows)) {
        row->hide();
        layout->removeWidget(row);
        row->deleteLater();
    }
    rows.clear();
    width = 0;
}

void StartPage::Column::add(QWidget* row)
{
    rows.append(row);
    layout->addWidget(row);
    row->show(); // a layout alone would wait for the event loop
    width = std::max({width, columnWidth, row->minimumSizeHint().width()});
}

void StartPage::Column::addHeading(const QString& text)
{
    QLabel* const label = makeLabel(text, 1.1, true);
    label->setContentsMargins(0, rows.isEmpty() ? 0 : pageMargin / 2, 0, 4);
    add(label);
}

QWidget* StartPage::makeHeader()
{
    auto* const header = new QWidget;
    header->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* const layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(pageMargin / 2);
    auto* const logo = new QLabel;
    logo->setPixmap(QApplication::windowIcon().pixmap(logoSize));
    layout->addWidget(logo);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch();
    texts->addWidget(makeLabel(QStringLiteral("Vexdesk"), 2.0, true));
    QLabel* const subtitle = makeLabel(tr("Торговый терминал"), 1.1, false);
    subtitle->setForegroundRole(QPalette::PlaceholderText);
    texts->addWidget(subtitle);
    texts->addStretch();
    layout->addLayout(texts, 1);
    return header;
}

void StartPage::setPlugins(qsizetype loadedCount, const QStringList& directories)
{
    QStringList lines{tr("Ни один модуль не загружен, поэтому команд здесь пока нет."), QString(),
                      tr("Терминал ищет модули в каталогах:")};
    for (const QString& directory : directories) {
        const QString path = QDir::toNativeSeparators(directory);
        lines.append(QDir(directory).exists() ? tr("• %1").arg(path)
                                              : tr("• %1 (каталога нет)").arg(path));
    }
    lines.append(QString());
    lines.append(tr("Положите файл модуля в один из них и запустите терминал снова."));
    m_hint->setText(lines.join(u'\n'));
    m_hint->setVisible(loadedCount == 0);
}

void StartPage::collect(const CommandContainer& container, const QString& heading,
                        QList<Row>* rows) const
{
    for (const CommandContainer::Entry& entry : container.entries()) {
        if (entry.container) {
            const QString title = withoutMnemonic(entry.container->title());
            collect(*entry.container, heading.isEmpty() ? title : tr("%1 › %2").arg(heading, title),
                    rows);
        } else if (!m_ownCommands.contains(entry.command->id())) {
            rows->append({heading, entry.command});
        }
    }
}

void StartPage::rebuild()
{
    m_rebuildSoon.stop();
    QList<Row> rows;
    collect(*ActionManager::instance()->menuBar(), QString(), &rows);

    m_commands.clear();
    QString heading;
    for (const Row& row : std::as_const(rows)) {
        if (row.heading != heading) {
            heading = row.heading;
            m_commands.addHeading(heading);
        }
        auto* const button = new CommandButton;
        button->setCommand(*row.command);
        m_commands.add(button);
    }
    orderRows();
}

void StartPage::setRecent(const QList<SeriesName>& series)
{
    constexpr qsizetype most = 10;
    m_recent.clear();
    if (!series.isEmpty())
        m_recent.addHeading(tr("Недавние серии"));
    for (const SeriesName& one : series.first(std::min(most, series.size()))) {
        auto* const button = new RowButton;
        button->setIcon(QIcon(QStringLiteral(":/desk/chart.png")));
        button->setText(one.securityName);
        button->setRemark(tr("%1 — %2").arg(one.boardCode, one.stockCode));
        button->setToolTip(seriesDescription(one));
        connect(button, &QPushButton::clicked, this, [this, one] { Q_EMIT seriesChosen(one); });
        m_recent.add(button);
    }
    orderRows();
}

// As they stand, and not as they were made.
void StartPage::orderRows()
{
    updateColumns();
    const QList<QWidget*> rows = m_commands.rows + m_recent.rows;
    for (qsizetype i = 1; i < rows.size(); ++i)
        setTabOrder(rows.at(i - 1), rows.at(i));
    Q_EMIT rebuilt();
}

QWidget* StartPage::firstRow() const
{
    const QList<QWidget*> rows = m_commands.rows + m_recent.rows;
    return rows.value(1); // a heading stands above it
}

QWidget* StartPage::lastRow() const
{
    const QList<QWidget*> rows = m_commands.rows + m_recent.rows;
    return rows.isEmpty() ? nullptr : rows.constLast();
}

// Beside each other where both have room.
void StartPage::updateColumns()
{
    const int both = m_commands.width + pageMargin + m_recent.width;
    const bool isRoom = viewport()->width() >= both + 2 * pageMargin;
    const bool areTwo = isRoom && !m_commands.rows.isEmpty() && !m_recent.rows.isEmpty();
    m_columns->setDirection(isRoom ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    // One without rows would take its half all the same, and below each other each a half of the
    // height.
    for (int i = 0; i < m_columns->count(); ++i)
        m_columns->setStretch(i, areTwo ? 1 : 0);
    const int one = std::max({pageWidth, m_commands.width, m_recent.width});
    widget()->setMaximumWidth((areTwo ? both : one) + 2 * pageMargin);
}

void StartPage::resizeEvent(QResizeEvent* event)
{
    updateColumns();
    QScrollArea::resizeEvent(event);
}

// Wherever the keys came from; the area itself does so for those who were in it already. Under the
// mouse nothing moves: a click ends where it began.
void StartPage::bringIntoView(QWidget* focused)
{
    if (focused && widget()->isAncestorOf(focused) && !QApplication::mouseButtons())
        ensureWidgetVisible(focused);
}

void StartPage::updateEnabled(const QByteArray& commandId)
{
    for (QWidget* const widget : std::as_const(m_commands.rows)) {
        auto* const button = qobject_cast<CommandButton*>(widget);
        if (button && button->commandId() == commandId)
            button->setEnabled(isCommandEnabled(commandId));
    }
}

} // namespace vexdesk
