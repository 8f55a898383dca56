// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/HeightForWidthTextField.h>

#include <memory>

namespace Pellarvine {

class Parser;

/// A label that shows text with markup, in its own font, alignment and colour:
///
///     auto *const label = new MarkupLabel;
///     label->setMarkup(tr("Press **Enter** to keep, `Esc` to drop."));
///
/// In Qt Designer, type the markup as `markup`, or as `stringValue`, which `awakeFromNib()` styles
/// when the file has been loaded. Set in code, `stringValue` is shown unchanged, with its markup.
/// docs/markup.md has the grammar. Main thread only.
class PELLARVINE_EXPORT MarkupLabel : public HeightForWidthTextField
{
    Q_OBJECT
    Q_PROPERTY(QString markup READ markup WRITE setMarkup NOTIFY markupChanged USER true)
    Q_PROPERTY(QString markupStringValue READ markupStringValue WRITE setMarkupStringValue NOTIFY
                       markupStringValueChanged DESIGNABLE false STORED false)

public:
    explicit MarkupLabel(QWidget *parent = nullptr);
    ~MarkupLabel() override;

    /// The text with its markup. Set here, it is shown in the label's font, alignment and
    /// `textColor`, also after they change; without a `textColor`, in the palette's colour. Fonts
    /// that the markup names stay, but have the label's size if none is given. Empty while the
    /// label shows a text that is not markup. Bind this property.
    QString markup() const;
    void setMarkup(const QString &markup);
    /// The same with arguments for `%1` to `%99`, which are shown as plain text: names of files,
    /// for example. They are not part of `markup`.
    void setMarkup(const QString &format, const QStringList &arguments);

    /// The rules that markup is read by, as in `MarkupParser`. They take effect with the next text
    /// that is set. Default: the nine.
    const QList<std::shared_ptr<const Parser>> &parsers() const;
    void setParsers(const QList<std::shared_ptr<const Parser>> &parsers);

    /// The text as displayed, without markup. A two-way binding to it loses the markup.
    QString markupStringValue() const;
    /// Styles the text once, by the font, the alignment and the colour that the label has now, on
    /// every call. Only the palette's colour follows its changes, until `textColor` or another text
    /// is set.
    void setMarkupStringValue(const QString &markup);

    /// Styles `markup` again, or `stringValue` if there is none: once, when loaded from an
    /// interface file.
    Q_INVOKABLE virtual void awakeFromNib();

Q_SIGNALS:
    void markupChanged(const QString &markup);
    void markupStringValueChanged(const QString &string); ///< with `stringValue`

protected:
    void changeEvent(QEvent *event) override;

private:
    void style(const QString &markup, const QStringList &arguments);
    void restyle();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
