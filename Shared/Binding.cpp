// SPDX-License-Identifier: MIT
#include "Shared/Binding.h"

#include <memory>
#include <utility>

namespace Pellarvine {

namespace {

struct UntypedTransformers final : detail::Transformers
{
    UntypedTransformers(Binding::Transformer forward, Binding::Transformer reverse)
        : functions { std::move(forward), std::move(reverse) }
    { }

    const Binding::Transformer &function(detail::Direction direction) const
    {
        return functions[direction == detail::Direction::forward ? 0 : 1];
    }
    bool transforms(detail::Direction direction) const override
    {
        return bool(function(direction));
    }
    QVariant transformed(detail::Direction direction, const QVariant &value) const override
    {
        return function(direction)(value);
    }

    const Binding::Transformer functions[2];
};

std::unique_ptr<detail::Transformers> makeTransformers(Binding::Transformer forward,
                                                       Binding::Transformer reverse)
{
    if (!forward && !reverse)
        return nullptr;
    return std::make_unique<UntypedTransformers>(std::move(forward), std::move(reverse));
}

const Binding::Transformer &function(const detail::Transformers *transformers,
                                     detail::Direction direction)
{
    static const Binding::Transformer none;
    return transformers
                   ? static_cast<const UntypedTransformers *>(transformers)->function(direction)
                   : none;
}

} // namespace

Binding::Binding(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                 const QString &toWith, bool twoWayBinding, Transformer forwardTransformer,
                 Transformer reverseTransformer)
    : BindingBase(std::move(object), with, std::move(to), toWith, twoWayBinding,
                  makeTransformers(std::move(forwardTransformer), std::move(reverseTransformer)))
{ }

const Binding::Transformer &Binding::forwardTransformer() const
{
    return function(transformers(), detail::Direction::forward);
}

const Binding::Transformer &Binding::reverseTransformer() const
{
    return function(transformers(), detail::Direction::reverse);
}

} // namespace Pellarvine
