// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QObject>
#include <QtCore/QString>

class ICore;

/// What the terminal expects of the object that a plug-in library exports.
///
/// The library's Qt metadata carries an interface id that begins with "qgui.plugin."; a library
/// without it is refused before any of its code runs. The exported object is a QObject that lists
/// IPlugin in its Q_INTERFACES.
///
/// Texts for people come through Qt's translation functions. The terminal installs the plug-in's
/// translation before it asks the object for the first text and takes it away after tini: the file
/// NAME_xx.qm in the directory "translations" beside the library, where NAME is the name of the
/// library's file up to its first dot without a "lib" at the beginning, and xx is the code of the
/// terminal's language. Without such a file the texts are shown as they are written in the code. A
/// plug-in installs no translator of its own.
///
/// Call order, all on the user-interface thread: the five texts, init, initStage once for each
/// stage in the order of InitStage, and at the end of the terminal tini. The object is destroyed
/// after tini, when its library is unloaded. An exception that leaves init refuses the plug-in;
/// one that leaves a later call is reported and the terminal goes on.
class IPlugin
{
public:
    /// The steps of the terminal's start, after every plug-in's init.
    enum class InitStage {
        PluginsReady, ///< every plug-in has been initialised
        WindowShown,  ///< the main window is on the screen
    };

    virtual ~IPlugin() = default;

    /// The plug-in's unique short name; a view of a constant.
    virtual QByteArrayView code() const = 0;
    /// The plug-in's title for people, in their language.
    virtual QString name() const = 0;
    virtual QString author() const = 0;
    virtual QString version() const = 0;
    virtual QString description() const = 0;

    /// Adds to the terminal what the plug-in has to offer. `core` outlives the plug-in.
    virtual void init(ICore* core) = 0;
    /// The terminal is about to close.
    virtual void tini() = 0;
    virtual void initStage(InitStage stage) = 0;
};

Q_DECLARE_INTERFACE(IPlugin, "com.oxa.vexdesk.Plugin.IPlugin/1.0")
