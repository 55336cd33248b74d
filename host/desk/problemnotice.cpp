// SPDX-License-Identifier: MIT
#include "desk/problemnotice.h"

#include "desk/problemsdialog.h"

#include <vexdesk/terminal/core.h>

#include <QtCore/QRegularExpression>

namespace vexdesk {

namespace {

// More of a text than fits the status bar of any screen; measuring a line takes its time.
constexpr int mostShown = 500;

// Of a path its end alone: there is room for what has happened then. The list has the whole.
QString asOneLine(const QString& text)
{
    static const QRegularExpression folders(QStringLiteral("/(?:[^/\\s]+/)+"));
    return text.left(mostShown)
        .simplified()
        .replace(folders, QStringLiteral("…/"))
        .replace(u'&', QLatin1String("&&"));
}

} // namespace

ProblemNotice::ProblemNotice(Core& core, QWidget* parent)
    : StatusLink(parent)
    , m_core(core)
{
    setObjectName(QStringLiteral("problems"));
    setToolTip(tr("Показать всё, что не удалось"));
    connect(this, &QToolButton::clicked, this, &ProblemNotice::showList);
    connect(core.notifier(), &Notifier::problemReported, this, &ProblemNotice::refresh);
    refresh();
}

ProblemNotice::~ProblemNotice() = default;

void ProblemNotice::refresh()
{
    const QStringList problems = m_core.problems();
    setVisible(!problems.isEmpty());
    if (!problems.isEmpty())
        setText(tr("Ошибки: %1. %2")
                    .arg(QString::number(problems.size()), asOneLine(problems.constLast())));
}

void ProblemNotice::showList()
{
    ProblemsDialog(m_core, window()).exec();
    refresh();
}

} // namespace vexdesk
