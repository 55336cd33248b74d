// SPDX-License-Identifier: MIT
#include "desk/guidewindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QScreen>
#include <QtGui/QTextBlock>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace vexdesk {

namespace {

const QLatin1String documentSuffix("md");

// Pictures are no wider than the text.
class Pages final : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        const QImage picture = resource.canConvert<QByteArray>()
                                   ? QImage::fromData(resource.toByteArray())
                                   : resource.value<QImage>();
        constexpr int margin = 40;
        const int room = viewport()->width() - margin;
        return picture.width() > room && room > 0
                   ? picture.scaledToWidth(room, Qt::SmoothTransformation)
                   : picture;
    }
};

// A heading as links in the documents name it.
QString anchorOf(const QString& heading)
{
    QString anchor;
    for (const QChar character : heading.toLower()) {
        if (character.isLetterOrNumber() || character == u'-' || character == u'_')
            anchor += character;
        else if (character == u' ')
            anchor += u'-';
    }
    return anchor;
}

} // namespace

QStringList guideDirectories()
{
    const QDir program(QCoreApplication::applicationDirPath());
    QStringList directories;
    for (const QString& path : {QStringLiteral("docs"), QStringLiteral(VEXDESK_GUIDE_PATH)})
        directories.append(QDir::cleanPath(program.absoluteFilePath(path)));
    return directories;
}

QString guideFile(Language language)
{
    const QStringList directories = guideDirectories();
    for (const QString& directory : directories) {
        const QString file =
            QStringLiteral("%1/guide.%2.md").arg(directory, languageCode(language));
        if (QFileInfo(file).isFile())
            return file;
    }
    return QString();
}

GuideWindow::GuideWindow(const QString& file, QWidget* parent)
    : QDialog(parent)
    , m_browser(new Pages)
{
    setObjectName(QStringLiteral("guideWindow"));
    setWindowTitle(tr("Руководство"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_browser->setObjectName(QStringLiteral("guide"));
    m_browser->setOpenLinks(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    connect(m_browser, &QTextBrowser::anchorClicked, this, &GuideWindow::follow);

    const QFontMetrics metrics = fontMetrics();
    const QSize wanted(140 * metrics.averageCharWidth(), 45 * metrics.lineSpacing());
    resize(wanted.boundedTo(screen()->availableSize() * 0.9));
    // Only now is it known how wide the pictures may be.
    layout->activate();
    m_browser->setSource(QUrl::fromLocalFile(file));
}

GuideWindow::~GuideWindow() = default;

void GuideWindow::follow(const QUrl& target)
{
    const QUrl url = m_browser->source().resolved(target);
    if (url.path() == m_browser->source().path()) {
        goToHeading(url.fragment(QUrl::FullyDecoded));
        return;
    }
    const QFileInfo file(url.toLocalFile());
    if (!url.isLocalFile() || file.suffix() != documentSuffix || !file.isFile())
        return;
    m_browser->setSource(QUrl::fromLocalFile(file.filePath()));
    goToHeading(url.fragment(QUrl::FullyDecoded));
}

void GuideWindow::goToHeading(const QString& anchor)
{
    for (QTextBlock block = m_browser->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || anchorOf(block.text()) != anchor)
            continue;
        m_browser->setTextCursor(QTextCursor(block));
        // At the top of the window, and not just within it.
        QScrollBar* const bar = m_browser->verticalScrollBar();
        bar->setValue(bar->value() + m_browser->cursorRect().top());
        return;
    }
}

} // namespace vexdesk
