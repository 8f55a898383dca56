// SPDX-License-Identifier: MIT
#include "Base/ClassRegistry.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// In the order of registration. Filled while libraries are loaded, before their static variables
// are initialised.
std::vector<RegisteredClass> &classes()
{
    static std::vector<RegisteredClass> all;
    return all;
}

} // namespace

bool RegisteredClass::isWidget() const
{
    // By name: this library does not load QtWidgets.
    const QMetaObject *ancestor = metaObject;
    while (ancestor && qstrcmp(ancestor->className(), "QWidget") != 0)
        ancestor = ancestor->superClass();
    return ancestor;
}

void registerClass(const RegisteredClass &added)
{
    // Appended also if it replaces one: the last class answers to the short name.
    std::erase_if(classes(),
                  [&](const RegisteredClass &known) { return known.name == added.name; });
    classes().push_back(added);
}

const RegisteredClass *registeredClass(const QString &name)
{
    const auto &all = classes();
    auto found = std::find_if(all.rbegin(), all.rend(),
                              [&](const RegisteredClass &known) { return known.name == name; });
    if (found == all.rend() && !name.isEmpty()) {
        const QString ending = u"::"_s + name;
        found = std::find_if(all.rbegin(), all.rend(), [&](const RegisteredClass &known) {
            return known.name.endsWith(ending);
        });
    }
    return found == all.rend() ? nullptr : &*found;
}

QStringList registeredClassNames()
{
    QStringList names;
    for (const RegisteredClass &known : classes())
        names.append(known.name);
    names.sort();
    return names;
}

} // namespace NS
