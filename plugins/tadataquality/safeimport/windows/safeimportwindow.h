// SPDX-License-Identifier: MIT
#pragma once

#include "importchoices.h"
#include "safeimport.h"
#include "safeimportrequest.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

class FilesPicker;
class LayoutPicker;
class OutlookPanel;
class PreviewView;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class SeriesPicker;
namespace tadata {
class ImportPreparation;
class ImportRunner;
class ImportWatch;
} // namespace tadata

/// The window "Безопасный импорт": shows files, what an import would take them for and do with
/// them, and imports them so that all of it can be taken back. Closed while an import runs, it
/// cancels that and closes when everything is taken back; its end waits for that.
/// User-interface thread.
class SafeImportWindow final : public QDialog
{
    Q_OBJECT

public:
    explicit SafeImportWindow(QWidget* parent = nullptr);
    /// Into the store with this root.
    explicit SafeImportWindow(const QDir& root, QWidget* parent = nullptr);
    ~SafeImportWindow() override;

    /// Takes over what is known of the import. An empty request changes nothing.
    void take(const tadata::SafeImportRequest& request);

    /// While an import runs, cancels that instead of closing.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void makeWidgets();
    QLayout* filesRow();
    QLayout* waysRow();
    QLayout* buttonsRow();
    void connectChoices();
    void connectPreparation();
    void connectRunner();

    void openFiles(const QStringList& files);
    void guessSeries();
    void forgetRequest();
    void setWays(const ImportWays& ways);
    void chooseSeries(const QString& series);
    void fillProfiles();
    void takeProfile(int index);
    void takeRole(int column, ColumnRole role);
    void takeWays();
    void begin();
    void lookAgain();
    void readAnew();
    void watch();
    void stopWatching();
    void takeLayouts();

    const tadata::LaidOutFile* currentFile() const;
    void showCurrentFile();
    void showLayout();
    void showOutlook();
    void showLine(const QString& file, qint64 line);

    void startImport();
    void startUndo();
    void showRunning(const QString& what);
    void showResult(const tadata::SafeImportResult& result);
    void say(const QString& text, bool isGood);
    void enable();
    void keepVenue() const;

    const QDir m_root;
    tadata::ImportChoices m_choices;
    tadata::ImportPreparation* m_preparation;
    tadata::ImportRunner* m_runner;
    tadata::ImportWatch* m_watch;
    /// As it was before somebody asked for the window, for the files that he means alone.
    struct BeforeRequest
    {
        QString series;
        std::optional<int> timeframe;
        ImportMode mode = ImportMode::Merge;
    };
    std::optional<BeforeRequest> m_beforeRequest;
    std::optional<int> m_wantedTimeframe; ///< by him, whatever the file
    bool m_isSeriesWanted = false;        ///< by him; until there are files
    /// As it is without the profile that is chosen: what one says is not said by the next.
    struct WithoutProfile
    {
        ImportWays ways;
        QString series;
        QString profiles; ///< the series that the profile has chosen
    };
    std::optional<WithoutProfile> m_withoutProfile;
    bool m_tellsResult = false;   ///< of an import, in the message
    bool m_waits = false;         ///< for another program, which is said
    bool m_closesThen = false;    ///< once what was cancelled is taken back
    bool m_guessesSeries = false; ///< once the layouts of new files are known
    tadata::LaidOutFile m_shown;  ///< in the preview, as its layout was found
    QTimer m_change;              ///< gathers what comes of one change of a file

    FilesPicker* m_files;
    QComboBox* m_profile;
    SeriesPicker* m_series;
    LayoutPicker* m_layout;
    PreviewView* m_preview;
    OutlookPanel* m_outlook;
    QButtonGroup* m_mode;
    QCheckBox* m_skipBad;
    QLabel* m_message;
    QProgressBar* m_progress;
    QPushButton* m_import;
    QPushButton* m_undo;
    QPushButton* m_close;
};
