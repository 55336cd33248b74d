// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectorbox.h>

class SecuritySelectorModel;

/// Lets the user choose a security of one board. Offers the reference data's until it is given
/// another model.
class VEXDESK_GUI_EXPORT SecuritySelectorBox final : public SelectorBox
{
    Q_OBJECT

public:
    explicit SecuritySelectorBox(QWidget* parent = nullptr);
    ~SecuritySelectorBox() override;

    /// Shows another model, which is populated now. The box owns one that has no parent.
    void setSourceModel(SecuritySelectorModel* model);

    /// The chosen security's id; 0 when nothing is chosen. Where its record has none, the id that
    /// SecurityDirectory knows for the codes.
    long long getSecurityId() const;
    /// Empty when nothing is chosen.
    QString getSecurityCode() const;
    /// The name by which files know the security: the same text as the code.
    QString getSecurityName() const;

public Q_SLOTS:
    /// Offers the securities of this board; none for empty codes.
    void setBoard(const QString& stockCode, const QString& boardCode);

Q_SIGNALS:
    void securityChanged(const QString& code);

protected:
    bool accepts(int row) const override;
    QString codeAt(int row) const override;
    void chosen() override;

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
