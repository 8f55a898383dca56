// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

#include <QColor>
#include <QUrl>
#include <QWidget>

#include <memory>

namespace NS {

/// Text in a window: to read, to select or to edit; plain or with attributes.
///
///     auto *const name = new NS::TextField; // a label whose text wraps
///     name->setWraps(false); // a single line
///     name->setEditable(true);
///     name->setBezeled(true);
///     connect(name, &NS::TextField::editingFinished, this, &Panel::rename);
///
/// By default, it is a label: neither selectable nor editable, without bezel and background. Text
/// that wraps gets its height from its width, in Qt's layouts and with constraints. Text without
/// attributes has the widget's font and colour. Of style sheets, `color` applies and, with a bezel,
/// `background` and `border`; `padding` does not. Lengths are in device-independent pixels. Setting
/// an equal value does nothing. Main thread only.
class PELLARVINE_EXPORT TextField : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString stringValue READ stringValue WRITE setStringValue NOTIFY stringValueChanged
                       USER true)
    Q_PROPERTY(NS::AttributedString attributedStringValue READ attributedStringValue WRITE
                       setAttributedStringValue NOTIFY attributedStringValueChanged
                               DESIGNABLE false STORED false)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY textColorChanged)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment NOTIFY alignmentChanged)
    Q_PROPERTY(bool wraps READ wraps WRITE setWraps NOTIFY wrapsChanged)
    Q_PROPERTY(double preferredMaxLayoutWidth READ preferredMaxLayoutWidth WRITE
                       setPreferredMaxLayoutWidth NOTIFY preferredMaxLayoutWidthChanged)
    Q_PROPERTY(int maximumNumberOfLines READ maximumNumberOfLines WRITE setMaximumNumberOfLines
                       NOTIFY maximumNumberOfLinesChanged)
    Q_PROPERTY(
            Qt::TextElideMode elideMode READ elideMode WRITE setElideMode NOTIFY elideModeChanged)
    Q_PROPERTY(bool selectable READ isSelectable WRITE setSelectable NOTIFY selectableChanged)
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY editableChanged)
    Q_PROPERTY(bool bezeled READ isBezeled WRITE setBezeled NOTIFY bezeledChanged)
    Q_PROPERTY(bool drawsBackground READ drawsBackground WRITE setDrawsBackground NOTIFY
                       drawsBackgroundChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY
                       backgroundColorChanged)
    Q_PROPERTY(QString placeholderString READ placeholderString WRITE setPlaceholderString NOTIFY
                       placeholderStringChanged)
    Q_PROPERTY(bool opensLinks READ opensLinks WRITE setOpensLinks NOTIFY opensLinksChanged)
    Q_PROPERTY(double firstBaselineOffsetFromTop READ firstBaselineOffsetFromTop STORED false)
    Q_PROPERTY(double lastBaselineOffsetFromBottom READ lastBaselineOffsetFromBottom STORED false)

public:
    explicit TextField(QWidget *parent = nullptr);
    ~TextField() override;

    QString stringValue() const; ///< without attributes
    void setStringValue(const QString &string); ///< removes the attributes
    /// Typed text has the attributes of the text around it.
    AttributedString attributedStringValue() const;
    void setAttributedStringValue(const AttributedString &text);
    QColor textColor() const; ///< default: invalid, for the colour of the palette
    void setTextColor(const QColor &color);
    /// The alignment of paragraphs without a style. In a right-to-left layout, AlignLeft means the
    /// right side unless AlignAbsolute is set. Default: AlignLeft | AlignVCenter.
    Qt::Alignment alignment() const;
    void setAlignment(Qt::Alignment alignment);
    bool wraps() const; ///< breaks lines at the width, and accepts typed line ends; default: true
    void setWraps(bool wraps);
    /// The width from which sizeHint() grows in height instead. Default: 0, for a readable width.
    double preferredMaxLayoutWidth() const;
    void setPreferredMaxLayoutWidth(double width);
    int maximumNumberOfLines() const; ///< of a text that wraps; default: 0, for all
    void setMaximumNumberOfLines(int count); ///< 0 if negative
    /// The side on which text that does not fit is elided; a tool tip shows all of it. A text that
    /// wraps shows the lines that fit. Text to select or to edit scrolls. Default: ElideRight.
    Qt::TextElideMode elideMode() const;
    void setElideMode(Qt::TextElideMode mode);
    bool isSelectable() const; ///< always true of a text to edit; default: false
    void setSelectable(bool selectable);
    bool isEditable() const; ///< by the user; default: false
    void setEditable(bool editable);
    bool isBezeled() const; ///< has the frame and the margins of a line edit; default: false
    void setBezeled(bool bezeled);
    bool drawsBackground() const; ///< in `backgroundColor`, inside the bezel; default: false
    void setDrawsBackground(bool draws);
    QColor backgroundColor() const; ///< default: invalid, for the colour of the palette
    void setBackgroundColor(const QColor &color);
    QString placeholderString() const; ///< shown while there is no text; default: empty
    void setPlaceholderString(const QString &string);
    bool opensLinks() const; ///< in the desktop's program for them; default: true
    void setOpensLinks(bool opens);

    double firstBaselineOffsetFromTop() const; ///< at the size of sizeHint()
    double lastBaselineOffsetFromBottom() const; ///< at the size of sizeHint()
    Q_INVOKABLE virtual void performLayout(); ///< part of the layout pass, see NSView.h

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override; ///< -1 if it does not wrap

public Q_SLOTS:
    void selectAll(); ///< of a text to select or to edit; does not move the focus

Q_SIGNALS:
    void textEdited(const QString &string); ///< by the user
    /// By Return in a single line, by Ctrl+Return in several, or by leaving after an edit.
    void editingFinished();
    void linkActivated(const QUrl &link); ///< in a text that is not editable, before it opens
    void stringValueChanged(const QString &string);
    void attributedStringValueChanged(const NS::AttributedString &text);
    void textColorChanged(const QColor &color);
    void alignmentChanged(Qt::Alignment alignment);
    void wrapsChanged(bool wraps);
    void preferredMaxLayoutWidthChanged(double width);
    void maximumNumberOfLinesChanged(int count);
    void elideModeChanged(Qt::TextElideMode mode);
    void selectableChanged(bool selectable);
    void editableChanged(bool editable);
    void bezeledChanged(bool bezeled);
    void drawsBackgroundChanged(bool draws);
    void backgroundColorChanged(const QColor &color);
    void placeholderStringChanged(const QString &string);
    void opensLinksChanged(bool opens);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    QSize sizeWithin(double maxLayoutWidth) const; ///< sizeHint() with another preferred width

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
