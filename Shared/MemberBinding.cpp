// SPDX-License-Identifier: MIT
#include "Shared/MemberBinding.h"

#include "Base/Failure.h"

#include <string>

namespace Pellarvine {

MemberBinding::~MemberBinding()
{
    QObject::disconnect(m_forward);
    QObject::disconnect(m_reverse);
}

void MemberBinding::doesNotSettle(const QObject *source, const QObject *target)
{
    detail::printWarning("Warning: the binding of a property of "
                         + std::string(source->metaObject()->className()) + " and one of "
                         + target->metaObject()->className() + " does not settle; stopped after "
                         + std::to_string(deepestExchange) + " exchanges");
}

} // namespace Pellarvine
