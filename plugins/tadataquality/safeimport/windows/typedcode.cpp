// SPDX-License-Identifier: MIT
#include "typedcode.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>

namespace tadata {

namespace {

class TypedCode final : public QObject
{
public:
    explicit TypedCode(QComboBox* box)
        : QObject(box)
        , m_box(box)
    {
        box->installEventFilter(this);
        box->view()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || m_isPassingOn ||
            !take(*static_cast<QKeyEvent*>(event)))
            return QObject::eventFilter(watched, event);
        // First the box's own search.
        const QScopedValueRollback passing(m_isPassingOn, true);
        QCoreApplication::sendEvent(watched, event);
        choose();
        return true;
    }

private:
    // Whether it is a letter of a code.
    bool take(const QKeyEvent& key)
    {
        const bool isShortcut = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
        const bool isLetter = !isShortcut && !key.text().isEmpty() && key.text().at(0).isPrint();
        if (!m_sinceLast.isValid() || m_sinceLast.elapsed() > QApplication::keyboardInputInterval())
            m_typed.clear();
        m_sinceLast.start();
        if (isLetter)
            m_typed += key.text();
        return isLetter;
    }

    void choose()
    {
        for (int entry = 0; entry < m_box->count(); ++entry) {
            const QString code = m_box->itemText(entry).section(u' ', 0, 0);
            if (code.compare(m_typed, Qt::CaseInsensitive) != 0)
                continue;
            if (m_box->view()->isVisible())
                m_box->view()->setCurrentIndex(
                    m_box->model()->index(entry, m_box->modelColumn(), m_box->rootModelIndex()));
            else
                m_box->setCurrentIndex(entry);
            break;
        }
    }

    QComboBox* m_box;
    QString m_typed;
    QElapsedTimer m_sinceLast;
    bool m_isPassingOn = false;
};

} // namespace

void preferTypedCode(QComboBox* box)
{
    new TypedCode(box);
}

} // namespace tadata
