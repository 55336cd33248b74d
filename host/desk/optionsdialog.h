// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

#include <memory>

class IOptionsPage;
class QListWidgetItem;

namespace vexdesk {

namespace Ui {
class OptionsDialog;
}

class OptionsPageView;

/// The window "Настройки": on the left the categories, on the right the pages of the chosen one,
/// which stand behind tabs when there are several. The categories can be searched.
///
/// A page's widget is made when the page is first shown. "Применить" lets every page that was shown
/// store its values; so does "ОК", which then closes the window, unless a page could not store its
/// values. When the terminal's settings cannot be written the user is told that the values hold for
/// as long as the terminal runs. However the window goes, each page that was shown is told before
/// its widget is destroyed. A page that was never shown hears nothing at all: it has nothing to
/// store.
///
/// What a page says of itself is made good where it is missing: pages without a category stand
/// together, and so do those of one category that are not neighbours.
///
/// Its size and the last chosen category outlive it, in the settings group "Desk/OptionsDialog".
class OptionsDialog final : public QDialog
{
    Q_OBJECT

public:
    /// The pages, in the order in which they are to stand, must live as long as the dialog.
    explicit OptionsDialog(const QList<IOptionsPage*>& pages, QWidget* parent = nullptr);
    ~OptionsDialog() override;

    void accept() override;
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Page
    {
        IOptionsPage* page = nullptr;
        QString title;
        OptionsPageView* view = nullptr;
    };
    struct Category
    {
        QString id;
        QString title;
        QListWidgetItem* item = nullptr;
        QList<Page> pages;
    };

    void readPages(const QList<IOptionsPage*>& pages);
    void addCategoryItems();
    void addCategoryViews();
    QWidget* makeHeadedPage(Page* page);
    QWidget* makeTabs(Category* category);
    void setUpButtons();
    void fitCategories();
    void restoreState();

    void choose(int row);
    void showCategory(int row);
    void search(const QString& text);
    bool apply();
    static void tellWhatIsNotKept();
    void keepButtonsLast();

    std::unique_ptr<Ui::OptionsDialog> m_ui;
    QList<Category> m_categories;
    QList<OptionsPageView*> m_views;
    int m_chosen = -1; // by the user; the search may show another one
};

} // namespace vexdesk
