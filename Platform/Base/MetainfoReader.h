// SPDX-License-Identifier: MIT
// Not API: reads AppStream metainfo files.
#pragma once

#include "Base/NSMetainfo.h"

QT_FORWARD_DECLARE_CLASS(QByteArray)

namespace Pellarvine::detail {

/// Reads a metainfo file, and skips elements that NS::Metainfo does not have. Throws
/// NS::PropertyListError, with `fileName` and the place, if the file is not well-formed or not a
/// metainfo file. Any thread.
NS::Metainfo metainfoFromXML(const QByteArray &xml, const QString &fileName);

} // namespace Pellarvine::detail
