// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QObject>

namespace Pellarvine {

class ReplaceableImageView;

/// What a ReplaceableImageView tells. Its one operation is optional, and found by its name: an
/// object of any class can be the delegate, and is told if the class declares the operation itself:
///
///     class Invoice : public QObject {
///         Q_OBJECT
///     public:
///         Q_INVOKABLE void replaceableImageView(Pellarvine::ReplaceableImageView *view,
///                                               const Pellarvine::Data &didLoadImageData);
///     };
///
/// A class that derives from this one instead has the compiler check how it writes the operation.
class PELLARVINE_EXPORT ReplaceableImageViewDelegate : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~ReplaceableImageViewDelegate() override;

    /// The user has put a picture into `view`; these are the bytes of its file, every one as it
    /// was.
    Q_INVOKABLE virtual void replaceableImageView(Pellarvine::ReplaceableImageView *view,
                                                  const Pellarvine::Data &didLoadImageData) = 0;
};

} // namespace Pellarvine
