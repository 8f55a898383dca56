// SPDX-License-Identifier: MIT
#include "Base/EditDistance.h"

#include <QList>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Pellarvine::detail {

// Each row has the distances of the first letters of `one` to all beginnings of `other`.
qsizetype editDistance(QStringView one, QStringView other)
{
    QList<qsizetype> beforeLast;
    QList<qsizetype> last;
    QList<qsizetype> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < one.size(); ++i) {
        beforeLast = std::exchange(last, row);
        row[0] = i + 1;
        for (qsizetype j = 0; j < other.size(); ++j) {
            const qsizetype replaced = last[j] + (one[i] == other[j] ? 0 : 1);
            row[j + 1] = std::min({ replaced, last[j + 1] + 1, row[j] + 1 });
            if (i > 0 && j > 0 && one[i] == other[j - 1] && one[i - 1] == other[j])
                row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
        }
    }
    return row.constLast();
}

} // namespace Pellarvine::detail
