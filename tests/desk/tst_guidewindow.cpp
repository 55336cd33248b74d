// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "desk/guidewindow.h"
#include "desk/mainwindow.h"
#include "messageboxes.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/terminal.h"

#include <QtGui/QImage>
#include <QtGui/QTextBlock>
#include <QtTest/QTest>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextBrowser>

using vexdesk::GuideWindow;
using vexdesk::Language;

class TestGuideWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void helpOpensTheGuideOfTheLanguage_data();
    void helpOpensTheGuideOfTheLanguage();
    void itIsOpenOnceAndGoesWithTheTerminal();
    void withoutAGuideItSaysWhereItWasSought();
    void picturesAreNoWiderThanTheText();
    void linksLeadToHeadings();
    void linksLeadToOtherDocumentsAndNowhereElse();
    void theRealGuidesAreShown_data();
    void theRealGuidesAreShown();

private:
    QString path(const QString& name) const { return m_docs + u'/' + name; }
    void makeTerminal(Language language);
    GuideWindow* guide() const { return m_terminal->window()->findChild<GuideWindow*>(); }
    static QTextBrowser* pages(const QWidget& window)
    {
        return testsupport::child<QTextBrowser>(&window, "guide");
    }
    static QString topLine(const QTextBrowser& browser)
    {
        return browser.cursorForPosition(QPoint(30, 20)).block().text();
    }

    QString m_docs;
    std::unique_ptr<testsupport::Terminal> m_terminal;
};

void TestGuideWindow::init()
{
    testsupport::failOnStrayWarnings();
    m_docs = vexdesk::guideDirectories().constFirst();
    QCOMPARE(m_docs, QCoreApplication::applicationDirPath() + QStringLiteral("/docs"));
    const QByteArray filling = QByteArray("Text.\n\n").repeated(200);
    testsupport::writeFile(path("guide.ru.md"), "# Начало\n\n[дальше](#вид-даты-ггггммдд)\n\n" +
                                                    filling + "## Вид даты: «ггггммдд»\n\n" +
                                                    filling);
    testsupport::writeFile(path("guide.en.md"), "# Beginning\n");
}

void TestGuideWindow::cleanup()
{
    m_terminal.reset();
    QDir(m_docs).removeRecursively();
}

void TestGuideWindow::makeTerminal(Language language)
{
    m_terminal = std::make_unique<testsupport::Terminal>(language);
}

void TestGuideWindow::helpOpensTheGuideOfTheLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("heading");
    QTest::newRow("Russian") << int(Language::Russian) << QStringLiteral("Начало");
    QTest::newRow("English") << int(Language::English) << QStringLiteral("Beginning");
}

void TestGuideWindow::helpOpensTheGuideOfTheLanguage()
{
    QFETCH(const int, language);
    QFETCH(const QString, heading);
    makeTerminal(static_cast<Language>(language));
    hands::keyClick(m_terminal->window(), Qt::Key_F1);
    QVERIFY(guide() && guide()->isVisible());
    QCOMPARE(guide()->windowTitle(), QStringLiteral("Руководство"));
    QCOMPARE(pages(*guide())->document()->firstBlock().text(), heading);
    QVERIFY(!guide()->isModal());
}

void TestGuideWindow::itIsOpenOnceAndGoesWithTheTerminal()
{
    makeTerminal(Language::Russian);
    hands::keyClick(m_terminal->window(), Qt::Key_F1);
    const QPointer<GuideWindow> first = guide();
    m_terminal->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_terminal->window()));
    hands::keyClick(m_terminal->window(), Qt::Key_F1);
    QCOMPARE(m_terminal->window()->findChildren<GuideWindow*>(), QList<GuideWindow*>{first});
    QVERIFY(QTest::qWaitForWindowActive(first));
    hands::keyClick(first, Qt::Key_Escape);
    QVERIFY(!first || !first->isVisible());
    m_terminal->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_terminal->window()));
    hands::keyClick(m_terminal->window(), Qt::Key_F1);
    const QPointer<GuideWindow> second =
        m_terminal->window()->findChildren<GuideWindow*>().constLast();
    QVERIFY(second->isVisible());
    QVERIFY(m_terminal->window()->close());
    QVERIFY(!second || !second->isVisible());
}

void TestGuideWindow::withoutAGuideItSaysWhereItWasSought()
{
    makeTerminal(Language::Russian);
    QVERIFY(QFile::remove(path("guide.ru.md")));
    const desktest::MessageBoxes boxes;
    hands::keyClick(m_terminal->window(), Qt::Key_F1);
    QCOMPARE(boxes.texts(),
             QStringList{QStringLiteral("Руководства нет ни в одном из каталогов:\n") +
                         vexdesk::guideDirectories().join(u'\n')});
    QVERIFY(!guide());
}

void TestGuideWindow::picturesAreNoWiderThanTheText()
{
    QImage picture(4000, 40, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(QDir().mkpath(path("images")));
    QVERIFY(picture.save(path("images/wide.png")));
    testsupport::writeFile(path("guide.ru.md"), "# A\n\n![wide](images/wide.png)\n");
    GuideWindow window(path("guide.ru.md"));
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(pages(window)->horizontalScrollBar()->maximum(), 0);
    const QImage shown = window.grab().toImage();
    int red = 0;
    for (int y = 0; y < shown.height(); ++y)
        red += shown.pixelColor(shown.width() / 2, y) == QColor(Qt::red) ? 1 : 0;
    QVERIFY2(red > 3, "the picture is there");
}

void TestGuideWindow::linksLeadToHeadings()
{
    GuideWindow window(path("guide.ru.md"));
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(topLine(*pages(window)), QStringLiteral("Начало"));
    Q_EMIT pages(window)->anchorClicked(QUrl(QStringLiteral("#вид-даты-ггггммдд")));
    QCOMPARE(topLine(*pages(window)), QStringLiteral("Вид даты: «ггггммдд»"));
    Q_EMIT pages(window)->anchorClicked(QUrl(QStringLiteral("guide.ru.md#начало")));
    QCOMPARE(topLine(*pages(window)), QStringLiteral("Начало"));
}

void TestGuideWindow::linksLeadToOtherDocumentsAndNowhereElse()
{
    testsupport::writeFile(path("data.csv"), "1,2,3\n");
    GuideWindow window(path("guide.ru.md"));
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    for (const char* link : {"data.csv", "missing.md", "https://example.org/guide.en.md", "../"}) {
        Q_EMIT pages(window)->anchorClicked(QUrl(QLatin1String(link)));
        QCOMPARE(pages(window)->document()->firstBlock().text(), QStringLiteral("Начало"));
    }
    Q_EMIT pages(window)->anchorClicked(QUrl(QStringLiteral("guide.en.md")));
    QCOMPARE(pages(window)->document()->firstBlock().text(), QStringLiteral("Beginning"));
}

void TestGuideWindow::theRealGuidesAreShown_data()
{
    QTest::addColumn<QString>("file");
    for (const char* code : {"ru", "en"})
        QTest::newRow(code) << QStringLiteral(DESK_DOCS "/guide.%1.md").arg(QLatin1String(code));
}

void TestGuideWindow::theRealGuidesAreShown()
{
    QFETCH(const QString, file);
    QVERIFY2(QFile::exists(file), "the build puts it beside the program");
    GuideWindow window(file);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Every link within the guide leads to a heading.
    QStringList anchors;
    const QTextDocument* const document = pages(window)->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QString link = part.fragment().charFormat().anchorHref();
            if (link.startsWith(u'#'))
                anchors.append(link);
        }
    }
    QVERIFY(anchors.size() > 10);
    for (const QString& anchor : std::as_const(anchors)) {
        QTextCursor start(pages(window)->document());
        pages(window)->setTextCursor(start);
        Q_EMIT pages(window)->anchorClicked(QUrl(anchor));
        QVERIFY2(pages(window)->textCursor().position() > 0, qPrintable(anchor));
    }
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestGuideWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_guidewindow.moc"
