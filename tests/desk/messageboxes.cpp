// SPDX-License-Identifier: MIT
#include "messageboxes.h"
#include "support/hands.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

namespace desktest {

MessageBoxes::MessageBoxes()
{
    connect(&m_timer, &QTimer::timeout, this, &MessageBoxes::answer);
    m_timer.start(1);
}

MessageBoxes::~MessageBoxes() = default;

void MessageBoxes::answer()
{
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (m_busy || !box || !box->isVisible())
        return;
    m_busy = true;
    m_texts.append(box->text());
    m_titles.append(box->windowTitle());
    if (m_whileOpen)
        m_whileOpen(box);
    hands::keyClick(box, Qt::Key_Enter);
    m_busy = false;
}

} // namespace desktest
