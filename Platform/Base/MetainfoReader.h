// SPDX-License-Identifier: MIT
// Not API: reads AppStream metainfo files.
#pragma once

#include "Base/NSMetainfo.h"

QT_FORWARD_DECLARE_CLASS(QByteArray)

namespace Pellarvine::detail {

/// Elements that NS::Metainfo has no place for are skipped. Throws NS::PropertyListError, which
/// names `fileName` and the place, if the file is not well-formed or no metainfo file.
NS::Metainfo metainfoFromXML(const QByteArray &xml, const QString &fileName);

} // namespace Pellarvine::detail
