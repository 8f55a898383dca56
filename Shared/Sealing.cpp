// SPDX-License-Identifier: MIT
#include "Shared/Sealing.h"

#include "Shared/ContainerReader.h"
#include "Shared/DeviceTransfer.h"
#include "Shared/Encryptor.h"

#include <QIODevice>

namespace Pellarvine {

void seal(QIODevice &in, QIODevice &out, QStringView passphrase, const Transfer &transfer)
{
    Encryptor encryptor(passphrase);
    const qint64 total = in.isSequential() ? -1 : in.size() - in.pos();
    qint64 done = 0;
    // The first call may be without data: an empty source gives a header too.
    detail::writeAll(out, encryptor.feed({}));
    for (;;) {
        detail::throwIfStopped(transfer);
        const Data piece = detail::readPiece(in);
        if (piece.isEmpty())
            break;
        detail::writeAll(out, encryptor.feed(piece));
        done += piece.size();
        if (transfer.progress)
            transfer.progress(done, total);
    }
    detail::writeAll(out, encryptor.finalize());
    detail::flush(out);
}

void open(QIODevice &in, QIODevice &out, QStringView passphrase, const Transfer &transfer)
{
    detail::ContainerReader reader(in, passphrase, true);
    reader.setTransfer(transfer);
    reader.verify();
    for (Data text = reader.read(); !text.isEmpty(); text = reader.read())
        detail::writeAll(out, text);
    detail::flush(out);
}

} // namespace Pellarvine
