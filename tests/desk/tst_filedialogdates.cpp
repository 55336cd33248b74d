// SPDX-License-Identifier: MIT
// The dates in Qt's own file dialog, as they are drawn. The system speaks English here.
#include "desk/deskapplication.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QTreeView>

using vexdesk::DeskApplication;
using vexdesk::Language;

namespace {

/// Notes the texts of the list entries that are drawn.
class NotingStyle final : public QProxyStyle
{
public:
    using QProxyStyle::QProxyStyle;

    mutable QStringList texts;

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (element == CE_ItemViewItem)
            texts.append(static_cast<const QStyleOptionViewItem*>(option)->text);
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

} // namespace

class TestFileDialogDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void areInTheTerminalsLanguage_data();
    void areInTheTerminalsLanguage();
};

void TestFileDialogDates::areInTheTerminalsLanguage_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("date");
    QTest::newRow("Russian") << Language::Russian << QStringLiteral("15.01.2024 10:20");
    QTest::newRow("English") << Language::English
                             << QLocale(QLocale::English, QLocale::UnitedStates)
                                    .toString(QDateTime(QDate(2024, 1, 15), QTime(10, 20)),
                                              QLocale::ShortFormat);
}

void TestFileDialogDates::areInTheTerminalsLanguage()
{
    QFETCH(const Language, language);
    QFETCH(const QString, date);
    static_cast<DeskApplication*>(qApp)->setLanguage(language);
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("bars.csv"));
    testsupport::writeFile(path, "bars");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime(QDate(2024, 1, 15), QTime(10, 20)),
                             QFileDevice::FileModificationTime));
    file.close();

    NotingStyle style;
    QFileDialog dialog(nullptr, QString(), directory.path());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.show();
    auto* const files = testsupport::child<QTreeView>(&dialog, "treeView");
    QVERIFY(files);
    files->setStyle(&style);
    files->setColumnWidth(3, 300);
    QTRY_COMPARE(files->model()->rowCount(files->rootIndex()), 1);
    files->grab();
    QVERIFY2(style.texts.contains(QStringLiteral("bars.csv")), qPrintable(style.texts.join(u'|')));
    QVERIFY2(style.texts.contains(date), qPrintable(style.texts.join(u'|')));
}

int main(int argc, char** argv)
{
    const DeskApplication application(argc, argv);
    TestFileDialogDates test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filedialogdates.moc"
