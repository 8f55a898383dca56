// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

namespace Pellarvine {

class ReplaceableImageView;

/// Receives the files of a ReplaceableImageView. An object of any class can be the delegate if its
/// class declares this method, which is found by its name:
///
///     class Invoice : public QObject {
///         Q_OBJECT
///     public:
///         Q_INVOKABLE void replaceableImageView(Pellarvine::ReplaceableImageView *view,
///                                               const Pellarvine::Data &didLoadImageData);
///     };
///
/// In a class that derives from this one, the compiler checks the method. Main thread only.
class PELLARVINE_EXPORT ReplaceableImageViewDelegate : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~ReplaceableImageViewDelegate() override;

    /// Called when the user has put a file into `view`, with the unchanged bytes of the file.
    Q_INVOKABLE virtual void replaceableImageView(Pellarvine::ReplaceableImageView *view,
                                                  const Pellarvine::Data &didLoadImageData) = 0;
};

} // namespace Pellarvine
