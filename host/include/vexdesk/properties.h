// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <memory>

/// Ties the selector boxes of a form together and gives them what they begin with.
/// User-interface thread only; the form that uses it owns it.
class VEXDESK_GUI_EXPORT Properties final : public QObject
{
    Q_OBJECT

public:
    explicit Properties(QObject* parent = nullptr);
    ~Properties() override;

    /// Ties the StockSelectorBox, BoardSelectorBox and SecuritySelectorBox that it finds below
    /// `form`: the chosen stock narrows the boards, the chosen board narrows the securities.
    /// The boxes must exist by now.
    void connectAll(QObject* form);

    /// Known keys: "StockId", what the stock box begins with: a number chooses the venue with that
    /// id and 0 nothing; any other text the first venue of the list. Other keys are only kept.
    void setValue(const QString& key, const QString& value);
    QString value(const QString& key) const;

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
