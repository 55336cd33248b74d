// SPDX-License-Identifier: MIT
#include "desk/problemsdialog.h"

#include <vexdesk/terminal/core.h>

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace vexdesk {

ProblemsDialog::ProblemsDialog(Core& core, QWidget* parent)
    : QDialog(parent)
    , m_core(core)
    , m_texts(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("problemsDialog"));
    setWindowTitle(tr("Ошибки"));
    m_texts->setObjectName(QStringLiteral("texts"));
    m_texts->setReadOnly(true);
    m_texts->setTabChangesFocus(true);
    m_texts->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* const buttons = new QDialogButtonBox;
    QPushButton* const copy =
        buttons->addButton(tr("&Копировать всё"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("copyButton"));
    copy->setAutoDefault(false);
    QPushButton* const close = buttons->addButton(tr("&Закрыть"), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("closeButton"));
    close->setDefault(true);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_texts);
    layout->addWidget(buttons);
    connect(copy, &QPushButton::clicked, this, &ProblemsDialog::copyAll);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProblemsDialog::reject);
    connect(core.notifier(), &Notifier::problemReported, this, &ProblemsDialog::showNew);

    const QFontMetrics metrics = fontMetrics();
    resize(90 * metrics.averageCharWidth(), 18 * metrics.lineSpacing());
    showNew();
}

ProblemsDialog::~ProblemsDialog() = default;

void ProblemsDialog::showNew()
{
    const QStringList problems = m_core.problems();
    for (; m_shown < problems.size(); ++m_shown) {
        if (m_shown > 0)
            m_texts->appendPlainText(QString()); // a blank line between two of them
        m_texts->appendPlainText(problems.at(m_shown));
    }
}

void ProblemsDialog::copyAll()
{
    QGuiApplication::clipboard()->setText(m_texts->toPlainText());
}

void ProblemsDialog::done(int result)
{
    // Only what was shown: another thread may have reported something since.
    m_core.forgetProblems(m_shown);
    m_shown = 0;
    QDialog::done(result);
}

} // namespace vexdesk
