// SPDX-License-Identifier: MIT
#include "desk/pluginloader.h"

#include "desk/errorreport.h"

#include <vexdesk/terminal/core.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>
#include <QtCore/QLibrary>
#include <QtCore/QLibraryInfo>
#include <QtCore/QPluginLoader>
#include <QtCore/QSet>
#include <QtCore/QTranslator>
#include <QtCore/QVersionNumber>

#include <algorithm>

#ifdef Q_OS_UNIX
#    include <unistd.h>
#endif

namespace vexdesk {

namespace {

const QLatin1String interfacePrefix("qgui.plugin.");

// The libraries of the directories, each file once.
QStringList libraryFiles(const QStringList& directories)
{
    QStringList files;
    QSet<QString> seen;
    for (const QString& directory : directories) {
        const QFileInfoList entries = QDir(directory).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& entry : entries) {
            if (!QLibrary::isLibrary(entry.fileName()) || seen.contains(entry.canonicalFilePath()))
                continue;
            seen.insert(entry.canonicalFilePath());
            files.append(entry.absoluteFilePath());
        }
    }
    return files;
}

// Whether plug-ins of the folder may be loaded.
Outcome checkFolder(const QString& folder)
{
#ifdef Q_OS_UNIX
    constexpr uint root = 0;
    const QFileInfo info(folder);
    const QString name = QDir::toNativeSeparators(folder);
    if (info.permission(QFile::WriteOther))
        return Failure{
            PluginLoader::tr("В каталог %1 может писать кто угодно. Запретите это, например "
                             "командой chmod o-w, и запустите терминал снова.")
                .arg(name)};
    if (info.ownerId() != root && info.ownerId() != geteuid())
        return Failure{
            PluginLoader::tr("Каталог %1 принадлежит другому пользователю. Загружаются модули из "
                             "каталогов администратора и своих: перенесите модуль в такой каталог.")
                .arg(name)};
#else
    Q_UNUSED(folder)
#endif
    return Outcome();
}

// The same for the folder of the file and, where that is a link, for the one in which it ends.
// Whoever may write there could put any library in the place of this one.
Outcome checkPlace(const QString& path)
{
    const QFileInfo file(path);
    const Outcome checked = checkFolder(file.absolutePath());
    return checked ? checkFolder(QFileInfo(file.canonicalFilePath()).absolutePath()) : checked;
}

// Whether the file is taken, as far as that shows without running its code. What Qt says goes into
// the record's details where that is all that is known.
Outcome checkMetadata(const QPluginLoader& library, PluginRecord& record)
{
    const QJsonObject metadata = library.metaData();
    if (metadata.isEmpty()) {
        record.details = library.errorString();
        return Failure{PluginLoader::tr("Файл повреждён или не является модулем Qt.")};
    }

    const QString interfaceId = metadata.value(QLatin1String("IID")).toString();
    if (!interfaceId.startsWith(interfacePrefix))
        return Failure{
            PluginLoader::tr("Это модуль другой программы: его интерфейс \"%1\", а нужен "
                             "\"%2*\".")
                .arg(interfaceId, interfacePrefix)};

    // Qt loads a library that was built with an older minor version, and no other.
    const int version = metadata.value(QLatin1String("version")).toInt();
    const int major = (version >> 16) & 0xff;
    const int minor = (version >> 8) & 0xff;
    if (major != QT_VERSION_MAJOR || minor > QLibraryInfo::version().minorVersion())
        return Failure{PluginLoader::tr("Модуль собран для Qt %1.%2, а терминал работает с Qt %3.")
                           .arg(QString::number(major), QString::number(minor),
                                QLibraryInfo::version().toString())};
    return Outcome();
}

// The texts of the plug-in in this language, installed; null when it has brought none.
std::unique_ptr<QTranslator> installTranslationOf(const QString& path, Language language)
{
    const QFileInfo library(path);
    QString name = library.baseName();
    if (name.startsWith(QLatin1String("lib")))
        name.remove(0, 3);
    auto translation =
        loadTranslation(name, language, {library.dir().filePath(QStringLiteral("translations"))});
    if (translation)
        QCoreApplication::installTranslator(translation.get());
    return translation;
}

} // namespace

PluginLoader::PluginLoader(QObject* parent)
    : QObject(parent)
{}

PluginLoader::~PluginLoader()
{
    unload();
}

QStringList PluginLoader::standardDirectories()
{
    const QDir program(QCoreApplication::applicationDirPath());
    QStringList directories;
    for (const QString& path :
         {QStringLiteral("plugins"), QStringLiteral("../lib/vexdesk/plugins")})
        directories.append(QDir::cleanPath(program.absoluteFilePath(path)));
    return directories;
}

void PluginLoader::load(const QStringList& directories, Core* core)
{
    unload();
    m_core = core;
    m_pagesBefore = core->optionsPages();
    m_directories = directories;
    for (const QString& path : libraryFiles(directories))
        loadFile(path);
    Q_EMIT changed();
}

void PluginLoader::loadFile(const QString& path)
{
    PluginRecord record;
    record.path = path;
    record.reason = checkPlace(path).message();
    if (!record.reason.isEmpty()) {
        m_records.append(record);
        return;
    }
    if (QFileInfo(path).size() == 0) { // Qt would write a warning about it into the log
        record.reason = tr("Файл пуст.");
        m_records.append(record);
        return;
    }
    Plugin plugin;
    plugin.library = std::make_unique<QPluginLoader>(path);
    record.reason = checkMetadata(*plugin.library, record).message();
    if (record.reason.isEmpty()) {
        // Before any of its code runs, which may ask for a text at once.
        plugin.translation = installTranslationOf(path, m_language);
        // A missing symbol has to show here, and not as the end of the process in the first call.
        plugin.library->setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
        const QList<IOptionsPage*> pages = m_core->optionsPages();
        Q_EMIT starting();
        record.reason = start(*plugin.library, record, plugin).message();
        if (record.reason.isEmpty()) {
            record.state = PluginRecord::State::Loaded;
            m_plugins.push_back(std::move(plugin));
        } else {
            dropPagesExcept(pages);
            Q_EMIT startFailed();
            plugin.library->unload();
        }
    }
    m_records.append(record);
}

Outcome PluginLoader::start(QPluginLoader& library, PluginRecord& record, Plugin& plugin)
{
    QObject* instance = nullptr;
    Outcome called = outcomeOf([&] { instance = library.instance(); });
    if (!called)
        return Failure{tr("Объект модуля не создан: %1").arg(called.message())};
    if (!library.isLoaded() || !instance) {
        record.details = library.errorString();
        return Failure{tr("Код модуля не загружается.")};
    }

    plugin.object = qobject_cast<IPlugin*>(instance);
    if (!plugin.object)
        return Failure{tr("Объект модуля не поддерживает интерфейс терминала (%1).")
                           .arg(QLatin1String(qobject_interface_iid<IPlugin*>()))};

    called = outcomeOf([&] {
        record.code = QString::fromUtf8(plugin.object->code());
        record.name = plugin.object->name();
        record.author = plugin.object->author();
        record.version = plugin.object->version();
        record.description = plugin.object->description();
    });
    if (!called)
        return Failure{tr("Модуль не сообщает сведения о себе: %1").arg(called.message())};
    if (isLoaded(record.code))
        return Failure{tr("Модуль с кодом \"%1\" уже загружен.").arg(record.code)};

    plugin.code = record.code;
    called = outcomeOf([&] { plugin.object->init(m_core); });
    return called ? called : Failure{tr("Ошибка при запуске модуля: %1").arg(called.message())};
}

bool PluginLoader::isLoaded(const QString& code) const
{
    return std::any_of(m_plugins.cbegin(), m_plugins.cend(),
                       [&code](const Plugin& plugin) { return plugin.code == code; });
}

void PluginLoader::initStage(IPlugin::InitStage stage)
{
    for (const Plugin& plugin : m_plugins) {
        if (const Outcome called = outcomeOf([&] { plugin.object->initStage(stage); }); !called)
            Q_EMIT callFailed(tr("Ошибка модуля %1 при запуске терминала: %2")
                                  .arg(plugin.code, called.message()));
    }
}

void PluginLoader::unload()
{
    if (!m_core)
        return;
    std::for_each(m_plugins.crbegin(), m_plugins.crend(), [this](const Plugin& plugin) {
        if (const Outcome called = outcomeOf([&] { plugin.object->tini(); }); !called)
            Q_EMIT callFailed(tr("Ошибка модуля %1 при завершении работы: %2")
                                  .arg(plugin.code, called.message()));
    });
    dropPagesExcept(m_pagesBefore);
    Q_EMIT ending();
    while (!m_plugins.empty()) {
        m_plugins.back().library->unload();
        m_plugins.pop_back();
    }
    m_records.clear();
    m_core = nullptr;
    Q_EMIT changed();
}

void PluginLoader::dropPagesExcept(const QList<IOptionsPage*>& kept)
{
    for (IOptionsPage* const page : m_core->optionsPages()) {
        if (!kept.contains(page))
            m_core->removeOptionsPage(page);
    }
}

} // namespace vexdesk
