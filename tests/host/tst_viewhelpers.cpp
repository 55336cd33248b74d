// SPDX-License-Identifier: MIT
// How the terminal's tables show cells and headers.

#include "support/strictlog.h"

#include <vexdesk/headerproxystyle.h>
#include <vexdesk/itemdelegate.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QStandardItemModel>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QTreeView>

#include <memory>
#include <vector>

namespace {

// Gives away what a cell is drawn with.
class OpenDelegate final : public ItemDelegate
{
public:
    using ItemDelegate::ItemDelegate;

    QStyleOptionViewItem optionFor(const QModelIndex& index,
                                   QStyle::State state = QStyle::State_Enabled) const
    {
        QStyleOptionViewItem option;
        option.state = state;
        initStyleOption(&option, index);
        return option;
    }
};

// Notes how the labels of headers are drawn, in place of drawing them.
class NotingStyle final : public QProxyStyle
{
public:
    explicit NotingStyle(std::vector<QStyleOptionHeader>* labels)
        : m_labels(labels)
    {}

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option);
        if (element == CE_HeaderLabel && header)
            m_labels->push_back(*header);
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }

private:
    std::vector<QStyleOptionHeader>* m_labels;
};

class Table final : public QTreeView
{
public:
    Table()
    {
        m_model.setHorizontalHeaderLabels({QStringLiteral("Цена"), QStringLiteral("Объём")});
        m_model.appendRow(
            {new QStandardItem(QStringLiteral("1.50")), new QStandardItem(QStringLiteral("12"))});
        setModel(&m_model);
        resize(300, 200);
    }

private:
    QStandardItemModel m_model;
};

} // namespace

class TestViewHelpers final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void alignsNumbersRight_data();
    void alignsNumbersRight();
    void keepsTheAlignmentOfTheModel();
    void framesNoCell();
    void belongsToItsView();
    void drawsNumbersAtTheRightEdge();
    void isOneStyle();
    void survivesTheWidgetsThatUseIt();
    void isMadeAnewForAnotherApplication();
    void drawsTitlesCentredAndNotBold();
    void leavesOtherControlsAsTheyAre();
    void drawsAHeader();

private:
    int m_argc = 1;
    char m_name[16] = "tst_viewhelpers";
    char* m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_app = std::make_unique<QApplication>(m_argc, m_argv);
};

void TestViewHelpers::alignsNumbersRight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("right");
    const auto row = [](const char* text, bool right) {
        QTest::newRow(*text ? text : "nothing") << QString::fromUtf8(text) << right;
    };
    row("0", true);
    row("12", true);
    row("-12", true);
    row("+1.50", true);
    row(".5", true);
    row("1975307.20", true);
    row("3000000000", true);
    row("", false);
    row("-", false);
    row("abc", false);
    row("12 шт.", false);
    row("1.2.3", false);
    row("1,5", false);
    row("1,234", false);
    row("1e5", false);
    row("nan", false);
    row("inf", false);
    row(" 12", false);
    row("05.01.2023 10:15", false);
    row("10:15", false);
}

void TestViewHelpers::alignsNumbersRight()
{
    QFETCH(const QString, text);
    QFETCH(const bool, right);
    QStandardItemModel model;
    model.appendRow(new QStandardItem(text));
    const OpenDelegate delegate(nullptr);
    const QStyleOptionViewItem option = delegate.optionFor(model.index(0, 0));
    QCOMPARE(option.text, text);
    QCOMPARE(bool(option.displayAlignment & Qt::AlignRight), right);
    if (right)
        QVERIFY(option.displayAlignment & Qt::AlignVCenter);
}

void TestViewHelpers::keepsTheAlignmentOfTheModel()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("12")));
    model.item(0)->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
    const OpenDelegate delegate(nullptr);
    QCOMPARE(delegate.optionFor(model.index(0, 0)).displayAlignment,
             Qt::AlignHCenter | Qt::AlignTop);
}

void TestViewHelpers::framesNoCell()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("12")));
    const OpenDelegate delegate(nullptr);
    const auto state =
        delegate
            .optionFor(model.index(0, 0),
                       QStyle::State_Enabled | QStyle::State_HasFocus | QStyle::State_Selected)
            .state;
    QVERIFY(!(state & QStyle::State_HasFocus));
    QVERIFY(state & QStyle::State_Enabled);
    QVERIFY(state & QStyle::State_Selected);
}

void TestViewHelpers::belongsToItsView()
{
    auto view = std::make_unique<QTreeView>();
    const QPointer<ItemDelegate> delegate = new ItemDelegate(view.get());
    view->setItemDelegate(delegate);
    QCOMPARE(delegate->parent(), view.get());
    view.reset();
    QVERIFY(!delegate);
}

// The first column of pixels in which something is drawn.
static int leftEdge(const QImage& image)
{
    const QRgb background = image.pixel(image.width() - 1, image.height() - 1);
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) != background)
                return x;
        }
    }
    return image.width();
}

void TestViewHelpers::drawsNumbersAtTheRightEdge()
{
    const auto edge = [](const QString& text) {
        QStandardItemModel model;
        model.appendRow(new QStandardItem(text));
        QTreeView view;
        view.setItemDelegate(new ItemDelegate(&view));
        view.setRootIsDecorated(false);
        view.setModel(&model);
        view.resize(300, 100);
        view.show();
        return leftEdge(view.viewport()->grab(view.visualRect(model.index(0, 0))).toImage());
    };
    QVERIFY(edge(QStringLiteral("abc")) < 50);
    QVERIFY(edge(QStringLiteral("123")) > 150);
}

void TestViewHelpers::isOneStyle()
{
    HeaderProxyStyle* const style = HeaderProxyStyle::instance();
    QVERIFY(style);
    QCOMPARE(HeaderProxyStyle::instance(), style);
}

void TestViewHelpers::survivesTheWidgetsThatUseIt()
{
    const QPointer<HeaderProxyStyle> style = HeaderProxyStyle::instance();
    {
        Table first;
        Table second;
        first.header()->setStyle(style);
        second.header()->setStyle(style);
        QCOMPARE(first.header()->style(), style.data());
        QCOMPARE(second.header()->style(), style.data());
    }
    QVERIFY(style);
    QCOMPARE(HeaderProxyStyle::instance(), style.data());
}

void TestViewHelpers::isMadeAnewForAnotherApplication()
{
    const QPointer<HeaderProxyStyle> before = HeaderProxyStyle::instance();
    m_app.reset();
    QVERIFY(!before);
    m_app = std::make_unique<QApplication>(m_argc, m_argv);
    Table table;
    table.header()->setStyle(HeaderProxyStyle::instance());
    table.show();
    QVERIFY(!table.grab().isNull());
    QCOMPARE(table.header()->style(), HeaderProxyStyle::instance());
}

void TestViewHelpers::drawsTitlesCentredAndNotBold()
{
    HeaderProxyStyle* const style = HeaderProxyStyle::instance();
    std::vector<QStyleOptionHeader> labels;
    QStyle* const drawn = style->baseStyle();
    QVERIFY(drawn);
    const QString name = drawn->name();
    style->setBaseStyle(new NotingStyle(&labels));

    Table table;
    table.header()->setStyle(style);
    table.header()->setDefaultAlignment(Qt::AlignRight | Qt::AlignTop);
    table.header()->setHighlightSections(true);
    table.selectAll();
    table.show();
    table.header()->grab();
    style->setBaseStyle(QStyleFactory::create(name));

    QVERIFY(labels.size() >= 2);
    for (const QStyleOptionHeader& label : labels) {
        QCOMPARE(label.textAlignment, Qt::Alignment(Qt::AlignCenter));
        QVERIFY(!(label.state & QStyle::State_On));
        QVERIFY(label.state & QStyle::State_Enabled);
    }
}

void TestViewHelpers::leavesOtherControlsAsTheyAre()
{
    QStyleOptionButton option;
    option.rect = QRect(0, 0, 80, 30);
    option.text = QStringLiteral("Найти");
    option.state = QStyle::State_Enabled | QStyle::State_On;
    const auto picture = [&option](const QStyle& style) {
        QImage image(option.rect.size(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        style.drawControl(QStyle::CE_PushButtonLabel, &option, &painter);
        return image;
    };
    const HeaderProxyStyle* const style = HeaderProxyStyle::instance();
    QCOMPARE(picture(*style), picture(*style->baseStyle()));
}

void TestViewHelpers::drawsAHeader()
{
    Table table;
    table.header()->setStyle(HeaderProxyStyle::instance());
    table.show();
    const QImage plain = table.header()->grab().toImage();
    QVERIFY(leftEdge(plain) < plain.width());
    // Over selected cells it looks the same.
    table.selectAll();
    QCOMPARE(table.header()->grab().toImage(), plain);
}

int main(int argc, char** argv)
{
    // Each application object would complain that it has none.
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    TestViewHelpers test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_viewhelpers.moc"
