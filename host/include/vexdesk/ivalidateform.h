// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

/// A form that can tell whether what it shows is complete, and marks what is not.
/// User-interface thread only.
class IValidateForm
{
public:
    virtual ~IValidateForm() = default;

    /// Marks each missing or wrong value in the form and returns whether there is none.
    virtual bool validate() = 0;
};

Q_DECLARE_INTERFACE(IValidateForm, "com.kavo.quelmor.terminal.IValidateForm/1.0")
