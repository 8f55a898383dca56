// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QByteArrayView>

namespace Pellarvine::detail {

/// A queue that keeps the last `delay` bytes. The reader of a stream needs this if the stream ends
/// in a trailer whose place is known only at the end.
class PELLARVINE_INTERNAL_EXPORT DelayLine
{
public:
    /// The output of one step: first `held`, then `passing`, a part of the chunk itself. `passing`
    /// is not copied and lives as long as the chunk.
    struct Released
    {
        Data held;
        QByteArrayView passing;
    };

    explicit DelayLine(qsizetype delay);

    /// The bytes that leave the line when `data` enters it, in order; possibly none.
    Data feed(QByteArrayView data);

    /// The same without joining the two pieces.
    Released release(QByteArrayView data);

    /// The bytes kept back: the last `delay` of all that was fed, or all if there were fewer.
    const Data &buffer() const { return m_buffer; }
    qsizetype delay() const { return m_delay; }

private:
    Released fullOverflow(QByteArrayView data);
    Released partialOverflow(QByteArrayView data);

    Data m_buffer;
    qsizetype m_delay;
};

} // namespace Pellarvine::detail
