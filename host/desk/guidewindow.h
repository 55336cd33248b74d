// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/language.h>

#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

class QTextBrowser;
class QUrl;

namespace vexdesk {

/// Where the user guide is: in "docs" beside the program, then where an installed terminal has it.
/// Absolute; they need not exist.
QStringList guideDirectories();

/// The guide in this language; empty when no directory has it.
QString guideFile(Language language);

/// The window of the user guide, with its pictures. Its links lead about in it and to the documents
/// beside it; nothing is fetched from elsewhere.
class GuideWindow final : public QDialog
{
    Q_OBJECT

public:
    explicit GuideWindow(const QString& file, QWidget* parent = nullptr);
    ~GuideWindow() override;

private:
    void follow(const QUrl& target);
    void goToHeading(const QString& anchor);

    QTextBrowser* m_browser;
};

} // namespace vexdesk
