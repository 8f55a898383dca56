// SPDX-License-Identifier: MIT
#include "Layout/NSLayoutAnchor.h"

#include "Base/Failure.h"

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

void warnOfFraction(const NS::LayoutConstraint &constraint)
{
    const NS::LayoutAttribute attribute = constraint.firstAttribute();
    const double constant = constraint.constant();
    const bool isSize =
            attribute == NS::LayoutAttribute::width || attribute == NS::LayoutAttribute::height;
    if (!isSize || constant <= 0.0 || constant >= 1.0)
        return;
    const QString text = u"Warning: the constraint %1 adds %2 units. To multiply, write "
                         "multipliedBy(%2)"_s.arg(constraint.description())
                                 .arg(constant);
    printWarning(text.toStdString());
}

} // namespace Pellarvine::detail
