// SPDX-License-Identifier: MIT
// Not API: the format of a binding.
#pragma once

#include "Base/Global.h"

#include <QLocale>
#include <QString>
#include <QVariant>

#include <optional>

namespace Pellarvine::detail {

/// A checked printf format. It has exactly one conversion, so printf reads no missing argument.
class PELLARVINE_PRIVATE_EXPORT BindingFormat
{
public:
    /// Returns nothing if `text` has no conversion, several, or one that is not supported.
    static std::optional<BindingFormat> parsed(const QString &text);

    /// The formatted value, with numbers as `locale` writes them. Empty for an invalid QVariant. If
    /// the conversion needs a number and `value` is not one, the text of `value` without the
    /// format.
    QString apply(const QVariant &value, const QLocale &locale) const;

private:
    QString m_before; // with "%" for "%%"
    QByteArray m_conversion; // "%8.2f"; "%8lld", with the length of the type that apply() passes
    bool m_groupsDigits = false; // the flag "'"
    QString m_after;
    char m_type = 's';
};

} // namespace Pellarvine::detail
