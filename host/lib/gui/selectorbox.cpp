// SPDX-License-Identifier: MIT
#include <vexdesk/selectorbox.h>

#include <vexdesk/selectormodel.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

struct SelectorBox::Private
{
    QPointer<SelectorModel> source;
    QString chosenCode;
};

SelectorBox::SelectorBox(QWidget* parent)
    : QComboBox(parent)
    , m_d(new Private)
{
    setPlaceholderText(tr("не выбрано"));
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    // The policy makes room for icons, which the entries do not have.
    setIconSize(QSize(0, 0));
    connect(this, &QComboBox::currentIndexChanged, this, [this] {
        m_d->chosenCode = sourceRow() < 0 ? QString() : codeAt(sourceRow());
        chosen();
    });
}

SelectorBox::~SelectorBox()
{
    // A model that the box owns goes after the part of the box that would listen to it.
    if (m_d->source)
        m_d->source->disconnect(this);
}

void SelectorBox::chooseFirst()
{
    if (count() > 0)
        setCurrentIndex(0);
}

void SelectorBox::showModel(SelectorModel* model)
{
    if (m_d->source) {
        m_d->source->disconnect(this);
        if (m_d->source != model && m_d->source->QObject::parent() == this)
            m_d->source->deleteLater();
    }
    m_d->source = model;
    if (!model->QObject::parent())
        model->setParent(this);
    model->populate();
    connect(model, &QAbstractItemModel::modelReset, this, &SelectorBox::rebuild);
    connect(model, &QObject::destroyed, this, &SelectorBox::rebuild);
    rebuild();
}

void SelectorBox::rebuild()
{
    {
        const QSignalBlocker quiet(this);
        clear();
        int choice = -1;
        for (int row = 0; m_d->source && row < m_d->source->rowCount(); ++row) {
            if (!accepts(row))
                continue;
            if (!m_d->chosenCode.isEmpty() && codeAt(row) == m_d->chosenCode)
                choice = count();
            addItem(m_d->source->index(row, 0).data().toString(), row);
        }
        // A list of one needs no choosing.
        setCurrentIndex(count() == 1 ? 0 : choice);
        m_d->chosenCode = sourceRow() < 0 ? QString() : codeAt(sourceRow());
    }
    chosen();
}

int SelectorBox::sourceRow() const
{
    return currentIndex() < 0 ? -1 : currentData().toInt();
}
