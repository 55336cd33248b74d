// SPDX-License-Identifier: MIT
#include "desk/optionsdialog.h"

#include "desk/errorreport.h"
#include "desk/optionspageview.h"

#include "ui_optionsdialog.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/icore.h>
#include <vexdesk/ioptionspage.h>

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk/OptionsDialog");
const QString sizeKey = QStringLiteral("size");
const QString categoryKey = QStringLiteral("category");

// What a page says of itself. One that throws says nothing: its name is no reason to keep the user
// from the other pages.
template <typename Question>
auto answerOf(const Question& question) -> decltype(question())
{
    try {
        return question();
    } catch (...) {
        return {};
    }
}

// The first text that says anything, on one line.
QString firstOf(const QStringList& texts)
{
    const auto found = std::find_if(texts.cbegin(), texts.cend(),
                                    [](const QString& text) { return !text.trimmed().isEmpty(); });
    return found == texts.cend() ? QString() : found->simplified();
}

// The page's icon or, so that the names stay in line, nothing in its size.
QIcon iconOf(const IOptionsPage& page, const QSize& size)
{
    QIcon icon = answerOf([&page] { return page.categoryIcon(); });
    if (icon.isNull() || icon.pixmap(size).isNull()) {
        QPixmap nothing(size);
        nothing.fill(Qt::transparent);
        icon = QIcon(nothing);
    }
    return icon;
}

} // namespace

OptionsDialog::OptionsDialog(const QList<IOptionsPage*>& pages, QWidget* parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::OptionsDialog>())
{
    m_ui->setupUi(this);
    m_ui->nothingFound->setForegroundRole(QPalette::PlaceholderText);
    m_ui->noPages->setForegroundRole(QPalette::PlaceholderText);
    setUpButtons();
    readPages(pages);
    addCategoryItems();
    addCategoryViews();
    keepButtonsLast();
    fitCategories();
    m_ui->sidebar->setVisible(!m_categories.isEmpty());
    m_ui->pages->setVisible(!m_categories.isEmpty());
    m_ui->noPages->setVisible(m_categories.isEmpty());
    m_ui->buttons->button(QDialogButtonBox::Apply)->setDisabled(m_categories.isEmpty());
    m_ui->nothingFound->hide();
    restoreState();

    connect(m_ui->categories, &QListWidget::currentRowChanged, this, &OptionsDialog::choose);
    connect(m_ui->search, &QLineEdit::textChanged, this, &OptionsDialog::search);
    m_ui->search->installEventFilter(this);
    m_ui->categories->setFocus();
}

OptionsDialog::~OptionsDialog()
{
    for (OptionsPageView* const view : std::as_const(m_views))
        view->finish();
}

void OptionsDialog::setUpButtons()
{
    const QDialogButtonBox* const box = m_ui->buttons;
    box->button(QDialogButtonBox::Ok)->setText(tr("ОК"));
    box->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    QPushButton* const applyButton = box->button(QDialogButtonBox::Apply);
    applyButton->setText(tr("Применить"));
    box->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);
    connect(applyButton, &QPushButton::clicked, this, &OptionsDialog::apply);
}

void OptionsDialog::readPages(const QList<IOptionsPage*>& pages)
{
    for (IOptionsPage* const page : pages) {
        const QString id = answerOf([page] { return page->category(); });
        auto category =
            std::find_if(m_categories.begin(), m_categories.end(),
                         [&id](const Category& candidate) { return candidate.id == id; });
        if (category == m_categories.end()) {
            const QString title = answerOf([page] { return page->displayCategory(); });
            m_categories.append({id, firstOf({title, id, tr("Прочее")}), nullptr, {}});
            category = std::prev(m_categories.end());
        }
        const QString title = answerOf([page] { return page->displayName(); });
        const QString pageId = answerOf([page] { return page->id(); });
        category->pages.append({page, firstOf({title, pageId, tr("Без названия")}), nullptr});
    }
}

void OptionsDialog::addCategoryItems()
{
    for (Category& category : m_categories) {
        const QIcon icon = iconOf(*category.pages.constFirst().page, m_ui->categories->iconSize());
        category.item = new QListWidgetItem(icon, category.title, m_ui->categories);
        category.item->setData(Qt::UserRole, category.id);
    }
}

void OptionsDialog::addCategoryViews()
{
    for (Category& category : m_categories) {
        m_ui->pages->addWidget(category.pages.size() == 1 ? makeHeadedPage(&category.pages.first())
                                                          : makeTabs(&category));
        for (Page& page : category.pages) {
            connect(page.view, &OptionsPageView::filled, this, &OptionsDialog::keepButtonsLast);
            m_views.append(page.view);
        }
    }
}

QWidget* OptionsDialog::makeHeadedPage(Page* page)
{
    auto* const place = new QWidget;
    auto* const layout = new QVBoxLayout(place);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const heading = new QLabel(page->title);
    heading->setObjectName(QStringLiteral("pageTitle"));
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    layout->addWidget(heading);
    page->view = new OptionsPageView(page->page, page->title);
    layout->addWidget(page->view, 1);
    return place;
}

QWidget* OptionsDialog::makeTabs(Category* category)
{
    auto* const tabs = new QTabWidget;
    tabs->setElideMode(Qt::ElideNone);
    int widest = 0;
    for (Page& page : category->pages) {
        page.view = new OptionsPageView(page.page, page.title);
        // A tab would take the mark for a mnemonic.
        tabs->addTab(page.view, QString(page.title).replace(u'&', QLatin1String("&&")));
        widest = std::max(widest, tabs->fontMetrics().horizontalAdvance(page.title));
    }
    // Room for a whole tab beside the arrows that scroll them, as long as the screen has it.
    const int extra = 12 * tabs->fontMetrics().averageCharWidth() +
                      2 * style()->pixelMetric(QStyle::PM_TabBarScrollButtonWidth);
    tabs->setMinimumWidth(std::min(widest + extra, screen()->availableSize().width() * 2 / 3));
    return tabs;
}

void OptionsDialog::fitCategories()
{
    QListWidget* const list = m_ui->categories;
    const int unit = fontMetrics().averageCharWidth();
    const int content = list->sizeHintForColumn(0) + 2 * list->frameWidth() +
                        list->verticalScrollBar()->sizeHint().width() + unit;
    // Longer names are wrapped.
    m_ui->sidebar->setFixedWidth(std::clamp(content, 24 * unit, 40 * unit));
}

void OptionsDialog::restoreState()
{
    const AppSettings settings(settingsGroup);
    const QSize stored = settings.value(sizeKey).toSize();
    const QFontMetrics metrics = fontMetrics();
    const QSize standard(110 * metrics.averageCharWidth(), 30 * metrics.lineSpacing());
    resize((stored.isValid() ? stored : standard).boundedTo(screen()->availableSize()));

    if (m_categories.isEmpty())
        return;
    const QString id = settings.value(categoryKey).toString();
    const auto found = std::find_if(m_categories.cbegin(), m_categories.cend(),
                                    [&id](const Category& category) { return category.id == id; });
    const auto row = found == m_categories.cend() ? 0 : found - m_categories.cbegin();
    m_ui->categories->setCurrentRow(static_cast<int>(row));
    choose(static_cast<int>(row));
}

void OptionsDialog::choose(int row)
{
    m_chosen = row;
    showCategory(row);
}

void OptionsDialog::showCategory(int row)
{
    m_ui->pages->setCurrentIndex(row + 1); // the first one is blank
}

void OptionsDialog::search(const QString& text)
{
    const QString sought = text.trimmed();
    const auto fits = [&sought](const Category& category) {
        const auto pageFits = [&sought](const Page& page) {
            return page.title.contains(sought, Qt::CaseInsensitive) ||
                   answerOf([&] { return page.page->matches(sought); });
        };
        return sought.isEmpty() || category.title.contains(sought, Qt::CaseInsensitive) ||
               std::any_of(category.pages.cbegin(), category.pages.cend(), pageFits);
    };
    const QSignalBlocker notTheUser(m_ui->categories);
    int shown = -1;
    for (int row = 0; row < m_categories.size(); ++row) {
        const bool visible = fits(m_categories.at(row));
        m_categories.at(row).item->setHidden(!visible);
        // The chosen one as long as it is there, otherwise the first one.
        if (visible && (shown < 0 || row == m_chosen))
            shown = row;
    }
    m_ui->categories->setVisible(shown >= 0);
    m_ui->nothingFound->setVisible(shown < 0);
    m_ui->categories->setCurrentRow(shown);
    showCategory(shown);
}

bool OptionsDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_ui->search && event->type() == QEvent::KeyPress) {
        // From the search to what it found, and not, as everywhere else, to "ОК".
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
            m_ui->categories->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

bool OptionsDialog::apply()
{
    // Every page has its turn, whatever became of the one before it.
    const auto failed = std::count_if(m_views.cbegin(), m_views.cend(),
                                      [](OptionsPageView* view) { return !view->apply(); });
    tellWhatIsNotKept();
    return failed == 0;
}

void OptionsDialog::tellWhatIsNotKept()
{
    if (!AppSettings(settingsGroup).sync())
        reportError(tr("Настройки не записаны: каталог %1 или файл vexdesk.ini в нём не принимает "
                       "запись. Они действуют, пока терминал работает; при следующем запуске "
                       "будут прежние.")
                        .arg(QDir::toNativeSeparators(ICore::getDir(QString(), false).path())));
}

void OptionsDialog::accept()
{
    if (apply())
        QDialog::accept();
}

void OptionsDialog::done(int result)
{
    AppSettings settings(settingsGroup);
    settings.setValue(sizeKey, size());
    if (m_chosen >= 0)
        settings.setValue(categoryKey, m_categories.at(m_chosen).id);
    QDialog::done(result);
}

void OptionsDialog::keepButtonsLast()
{
    // What is made late would be reached by Tab after the buttons. Their box stands for the first
    // of them and would keep its place; it has nothing else to do there.
    m_ui->buttons->setFocusProxy(nullptr);
    QWidget* last = nullptr;
    QList<QWidget*> buttons;
    for (QWidget* widget = nextInFocusChain(); widget != this;
         widget = widget->nextInFocusChain()) {
        if (widget->parentWidget() == m_ui->buttons)
            buttons.append(widget);
        else if (widget->focusPolicy() & Qt::TabFocus)
            last = widget;
    }
    for (QWidget* const button : std::as_const(buttons)) {
        setTabOrder(last, button);
        last = button;
    }
}

} // namespace vexdesk
