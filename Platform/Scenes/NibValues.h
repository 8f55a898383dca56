// SPDX-License-Identifier: MIT
// Not API: checks the texts of values in interface files. The loader would replace or skip them.
#pragma once

#include <QHash>
#include <QString>

namespace Pellarvine::detail {

/// Each returns the reason why a value is invalid, as part of a message. Empty if it is valid.
/// @{

/// For the text in the element `tag`, which is in a value of that kind: "year" in a "date".
QString textProblem(const QString &tag, const QString &kind, const QString &text);

/// For an attribute of an element in a value: "role" of "colorrole".
QString attributeProblem(const QString &tag, const QString &attribute, const QString &text);

/// For a value as a whole. `parts` are the texts of its elements by their names.
QString wholeProblem(const QString &kind, const QHash<QString, QString> &parts);

/// For a whole number that is at least `least` and at most `most`.
QString numberProblem(QStringView text, int least, int most);
/// @}

} // namespace Pellarvine::detail
