// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtWidgets/QComboBox>

#include <memory>

class SelectorModel;

/// What the selector boxes have in common: a drop-down list over a part of a source model, in
/// which typing the beginning of a code chooses it. Nothing is chosen until the user does, except
/// where there is only one entry. User-interface thread only.
class VEXDESK_GUI_EXPORT SelectorBox : public QComboBox
{
    Q_OBJECT

public:
    ~SelectorBox() override;

    /// Chooses the first entry, if there is one.
    void chooseFirst();

protected:
    explicit SelectorBox(QWidget* parent);

    /// Shows another model, populates it, and takes ownership of one that has no parent.
    void showModel(SelectorModel* model);
    /// Makes the list anew. The choice stays where it is still offered.
    void rebuild();
    /// The chosen row of the source model, -1 when nothing is chosen.
    int sourceRow() const;

    /// Whether a row of the source model is offered.
    virtual bool accepts(int row) const = 0;
    /// The code of a row of the source model, unique among those that are offered.
    virtual QString codeAt(int row) const = 0;
    /// Something else may be chosen now, or nothing.
    virtual void chosen() = 0;

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
