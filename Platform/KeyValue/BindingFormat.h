// SPDX-License-Identifier: MIT
// Not API: the format of a binding.
#pragma once

#include "Base/Global.h"

#include <QString>
#include <QVariant>

#include <optional>

namespace Pellarvine::detail {

/// A printf format with a single conversion, checked, so that no text can reach past its argument.
class PELLARVINE_PRIVATE_EXPORT BindingFormat
{
public:
    /// Nothing if `text` is no such format.
    static std::optional<BindingFormat> parsed(const QString &text);

    /// An empty text for no value, and the value's text if it is no number where one is needed.
    QString apply(const QVariant &value) const;

private:
    QString m_before; // with its percent signs undoubled
    QByteArray m_conversion; // "%8.2f", with the length that apply() passes
    QString m_after;
    char m_type = 's';
};

} // namespace Pellarvine::detail
