// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/HeightForWidthTextField.h>

#include <memory>

namespace Pellarvine {

/// A label that shows text with markup, in its own font, alignment and colour:
///
///     auto *const label = new MarkupLabel;
///     label->setMarkupStringValue(tr("Press **Enter** to keep, `Esc` to drop."));
///
/// In Qt Designer, type the markup as `stringValue`: `awakeFromNib()` styles it as the file is
/// loaded. Set in code, `stringValue` is shown as it is, markup and all. docs/markup.md has the
/// grammar.
class PELLARVINE_EXPORT MarkupLabel : public HeightForWidthTextField
{
    Q_OBJECT
    Q_PROPERTY(QString markupStringValue READ markupStringValue WRITE setMarkupStringValue NOTIFY
                       markupStringValueChanged DESIGNABLE false STORED false)

public:
    explicit MarkupLabel(QWidget *parent = nullptr);
    ~MarkupLabel() override;

    /// The text as displayed, without markup: the markup itself is not kept. So what is bound to it
    /// both ways loses its markup; connect the model's signal to the setter instead.
    QString markupStringValue() const;
    /// Styles the text by the font, the alignment and the colour that the label has at this moment,
    /// every time that it is called. Without a `textColor`, text for which the markup names no
    /// colour has the palette's, and follows the palette until `textColor` or another text is set.
    void setMarkupStringValue(const QString &markup);

    /// Styles `stringValue`, once, as loaded from an interface file.
    Q_INVOKABLE virtual void awakeFromNib();

Q_SIGNALS:
    void markupStringValueChanged(const QString &string); ///< with `stringValue`

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
