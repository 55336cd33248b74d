// SPDX-License-Identifier: MIT
#include "typedcode.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>

#include <optional>

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
        if (choose())
            return true;
        // No code begins so: the box's own search, which knows titles.
        const QScopedValueRollback passing(m_isPassingOn, true);
        QCoreApplication::sendEvent(watched, event);
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

    QString codeOf(int entry) const
    {
        return m_box->itemText(entry).section(QStringLiteral(" — "), 0, 0);
    }

    // Of the codes that begin so the one that ends so, too, or the one that is chosen already: what
    // depends on it is not chosen anew on the way to it.
    std::optional<int> found() const
    {
        std::optional<int> found;
        const bool isInList = m_box->view()->isVisible();
        const int current = isInList ? m_box->view()->currentIndex().row() : m_box->currentIndex();
        for (int entry = 0; entry < m_box->count(); ++entry) {
            const QString code = codeOf(entry);
            if (!code.startsWith(m_typed, Qt::CaseInsensitive))
                continue;
            if (code.size() == m_typed.size())
                return entry;
            if (!found || entry == current)
                found = entry;
        }
        return found;
    }

    bool choose()
    {
        const std::optional<int> entry = found();
        if (!entry)
            return false;
        if (m_box->view()->isVisible())
            m_box->view()->setCurrentIndex(
                m_box->model()->index(*entry, m_box->modelColumn(), m_box->rootModelIndex()));
        else if (*entry != m_box->currentIndex())
            m_box->setCurrentIndex(*entry);
        return true;
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
