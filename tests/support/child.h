// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace testsupport {

/// The child with this name, or any of the class where no name is given. A test that cannot find it
/// ends at once and says which.
template <typename Child>
Child* child(const QObject* parent, const char* name = nullptr)
{
    auto* const found = parent->findChild<Child*>(QString::fromUtf8(name));
    if (!found)
        qFatal("no %s \"%s\" in %s", Child::staticMetaObject.className(), name ? name : "",
               parent->metaObject()->className());
    return found;
}

} // namespace testsupport
