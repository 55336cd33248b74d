// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>

class QMimeData;
class QWidget;

/// Takes the files that are dropped on a window, which then accepts drops; or, without a window, on
/// any main window of the terminal. User-interface thread.
class FileDrop final : public QObject
{
    Q_OBJECT

public:
    /// On this window.
    FileDrop(QWidget* window, QObject* parent);
    /// On each main window of the process, also such as come later.
    explicit FileDrop(QObject* parent);
    ~FileDrop() override;

    /// The local paths of what is dragged, none for anything else. Nobody looks at them: their
    /// disk may take its time to answer, and whoever opens them hears what they are.
    static QStringList filesOf(const QMimeData* data);

Q_SIGNALS:
    void dropped(const QStringList& files);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isMine(const QObject* watched) const;

    const QWidget* m_window = nullptr; ///< null: each main window
};
