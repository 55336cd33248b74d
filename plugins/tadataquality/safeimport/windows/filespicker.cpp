// SPDX-License-Identifier: MIT
#include "filespicker.h"

#include "compactbox.h"
#include "recentfiles.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

FilesPicker::FilesPicker(QWidget* parent)
    : QWidget(parent)
    , m_files(new QComboBox(this))
    , m_open(new QPushButton(tr("&Открыть..."), this))
    , m_recent(new QToolButton(this))
    , m_menu(new QMenu(this))
{
    m_files->setObjectName(QStringLiteral("files"));
    m_files->setPlaceholderText(tr("откройте файл или перетащите его сюда"));
    constexpr int shortest = 20;
    tadata::makeCompact(m_files, shortest);
    m_open->setObjectName(QStringLiteral("open"));
    m_recent->setObjectName(QStringLiteral("recent"));
    m_recent->setText(tr("&Недавние"));
    m_recent->setPopupMode(QToolButton::InstantPopup);
    m_recent->setMenu(m_menu);
    m_recent->setFocusPolicy(Qt::StrongFocus);
    m_recent->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    auto* const label = new QLabel(tr("&Файл:"));
    label->setBuddy(m_files);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(label);
    layout->addWidget(m_files, 1);
    layout->addWidget(m_open);
    layout->addWidget(m_recent);
    connect(m_open, &QPushButton::clicked, this, &FilesPicker::ask);
    connect(m_menu, &QMenu::aboutToShow, this, &FilesPicker::fillRecent);
    connect(m_files, &QComboBox::currentIndexChanged, this, [this] {
        m_files->setToolTip(QDir::toNativeSeparators(current()));
        Q_EMIT currentChanged();
    });
    fillRecent();
}

FilesPicker::~FilesPicker() = default;

void FilesPicker::setFiles(const QStringList& files)
{
    const QSignalBlocker quiet(m_files);
    m_files->clear();
    for (const QString& file : files) {
        const QString name = QFileInfo(file).fileName();
        m_files->addItem(
            files.size() > 1
                ? tr("%1 (%2 из %3)").arg(name).arg(m_files->count() + 1).arg(files.size())
                : name,
            file);
        m_files->setItemData(m_files->count() - 1, QDir::toNativeSeparators(file), Qt::ToolTipRole);
    }
    m_files->setCurrentIndex(files.isEmpty() ? -1 : 0);
    m_files->setToolTip(QDir::toNativeSeparators(current()));
}

QString FilesPicker::current() const
{
    return m_files->currentData().toString();
}

void FilesPicker::setCurrent(const QString& file)
{
    const int place = m_files->findData(file);
    if (place >= 0)
        m_files->setCurrentIndex(place);
}

void FilesPicker::ask()
{
    const QStringList recent = tadata::recentFiles();
    const QString folder = recent.isEmpty() ? QString() : QFileInfo(recent.first()).path();
    // Goes with this widget, whoever ends that while the dialog is open.
    auto* const dialog = new QFileDialog(this, tr("Файлы для импорта"), folder,
                                         tr("Текстовые файлы (*.txt *.csv);;Все файлы (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    connect(dialog, &QFileDialog::filesSelected, this, &FilesPicker::filesChosen);
    dialog->open();
}

void FilesPicker::fillRecent()
{
    m_menu->clear();
    const QStringList recent = tadata::recentFiles();
    for (const QString& file : recent) {
        // What a file's name has of "&" is no access key.
        QString text = QDir::toNativeSeparators(file).replace(u'&', QStringLiteral("&&"));
        QAction* const action = m_menu->addAction(text);
        action->setData(file);
        connect(action, &QAction::triggered, this, [this, file] { Q_EMIT filesChosen({file}); });
    }
    m_recent->setEnabled(!recent.isEmpty());
    // A disk that is far away may take its time to answer.
    m_looking.start(
        [recent](const std::atomic<bool>& stop) {
            QStringList missing = recent;
            missing.removeIf(
                [&stop](const QString& file) { return stop || QFileInfo::exists(file); });
            return missing;
        },
        [this](const QStringList& missing) { showMissing(missing); });
}

void FilesPicker::showMissing(const QStringList& files)
{
    const QList<QAction*> actions = m_menu->actions();
    for (QAction* const action : actions)
        action->setEnabled(!files.contains(action->data().toString()));
}
