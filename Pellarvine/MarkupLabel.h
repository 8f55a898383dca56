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
/// as the file is loaded. Set in code, `stringValue` is shown as it is, markup and all.
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

    /// The text with its markup, as it was set here or by setMarkupStringValue(). Empty while the
    /// label shows a text that was set otherwise. This is what to bind.
    QString markup() const;
    /// Does what setMarkupStringValue() does, but nothing for the markup that there is.
    void setMarkup(const QString &markup);
    /// The same with arguments for `%1` to `%99`, which are shown as they are: names of files, for
    /// example. They are no part of `markup`.
    void setMarkup(const QString &format, const QStringList &arguments);

    /// The rules that markup is read by, as `MarkupParser` has them. They count for the next text
    /// that is set. Default: the nine.
    const QList<std::shared_ptr<const Parser>> &parsers() const;
    void setParsers(const QList<std::shared_ptr<const Parser>> &parsers);

    /// The text as displayed, without markup. What is bound to it both ways loses its markup.
    QString markupStringValue() const;
    /// Styles the text by the font, the alignment and the colour that the label has at this moment,
    /// every time that it is called. Without a `textColor`, text for which the markup names no
    /// colour has the palette's, and follows the palette until `textColor` or another text is set.
    void setMarkupStringValue(const QString &markup);

    /// Styles `markup`, or without one `stringValue`, once, as loaded from an interface file.
    Q_INVOKABLE virtual void awakeFromNib();

Q_SIGNALS:
    void markupChanged(const QString &markup);
    void markupStringValueChanged(const QString &string); ///< with `stringValue`

protected:
    void changeEvent(QEvent *event) override;

private:
    void style(const QString &markup, const QStringList &arguments);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
