// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

/// @file
/// Macros and types that all public headers use.

/// Exports a public class or function. Needs no definition in programs.
#if defined(PELLARVINE_BUILDING)
#define PELLARVINE_EXPORT Q_DECL_EXPORT
#else
#define PELLARVINE_EXPORT Q_DECL_IMPORT
#endif

/// Marks a declaration that the next major version removes, as in
/// PELLARVINE_DEPRECATED("since 1.2; use paint()"). The compiler warns where it is used, unless the
/// program defines PELLARVINE_NO_DEPRECATION_WARNINGS.
#if defined(PELLARVINE_NO_DEPRECATION_WARNINGS)
#define PELLARVINE_DEPRECATED(text)
#else
#define PELLARVINE_DEPRECATED(text) [[deprecated(text)]]
#endif

/// @cond internal
// Not API: internals that another of the libraries calls. They may change with any version.
#define PELLARVINE_PRIVATE_EXPORT PELLARVINE_EXPORT
// Not API: internals that the tests of this source tree reach; hidden in a released library.
#if defined(PELLARVINE_EXPORT_INTERNALS)
#define PELLARVINE_INTERNAL_EXPORT PELLARVINE_EXPORT
#else
#define PELLARVINE_INTERNAL_EXPORT
#endif
/// @endcond

namespace Pellarvine {

/// A byte array. Copies share their bytes until one of them is changed.
using Data = QByteArray;

} // namespace Pellarvine

/// @cond internal
namespace Pellarvine::detail { }
// All internals are in Pellarvine::detail, and are called detail::… everywhere.
namespace NS {
namespace detail = Pellarvine::detail;
}
namespace CA {
namespace detail = Pellarvine::detail;
}
namespace CG {
namespace detail = Pellarvine::detail;
}
/// @endcond
