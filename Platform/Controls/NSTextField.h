// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

#include <QColor>
#include <QUrl>
#include <QWidget>

#include <memory>

namespace NS {

/// Text in a window, to read, to select, or to edit; plain, or with attributes.
///
///     auto *const hint = new NS::TextField; // a label whose text wraps at its width
///     hint->setAttributedStringValue(parser.parse(u"Hold **Shift** to keep the ratio"_s));
///
///     auto *const name = new NS::TextField;
///     name->setWraps(false); // a single line
///     name->setEditable(true);
///     name->setBezeled(true);
///     connect(name, &NS::TextField::editingFinished, this, &Panel::rename);
///
/// Its height follows its width wherever it wraps, in Qt's layouts and with constraints. As made it
/// is a label: not selectable, not editable, without bezel and background. Its text has the
/// widget's font and colour where no attribute says otherwise.
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

    /// The text without its attributes. Setting it drops them.
    QString stringValue() const;
    void setStringValue(const QString &string);
    /// Also what was typed, with the attributes of the text around it.
    AttributedString attributedStringValue() const;
    void setAttributedStringValue(const AttributedString &text);

    /// Invalid, as made, for the palette's.
    QColor textColor() const;
    void setTextColor(const QColor &color);
    /// Left and right change sides in a layout that runs from right to left, unless AlignAbsolute
    /// is set. Default: AlignLeft | AlignVCenter. A paragraph style has its own.
    Qt::Alignment alignment() const;
    void setAlignment(Qt::Alignment alignment);

    /// Whether lines end at the width, and editing takes line ends. Default: true.
    bool wraps() const;
    void setWraps(bool wraps);
    /// The width at which a text that wraps asks for more height rather than more width, in units
    /// of the screen; 0, as made, for a width that is good to read.
    double preferredMaxLayoutWidth() const;
    void setPreferredMaxLayoutWidth(double width);
    /// Of a text that wraps; what is behind them is elided. 0, as made, for all.
    int maximumNumberOfLines() const;
    void setMaximumNumberOfLines(int count);
    /// How a text that has no room is cut; a tool tip shows it whole. Text to select or edit
    /// scrolls instead. Default: ElideRight.
    Qt::TextElideMode elideMode() const;
    void setElideMode(Qt::TextElideMode mode);

    bool isSelectable() const; ///< true if it is editable
    void setSelectable(bool selectable);
    bool isEditable() const; ///< by the user; default: false
    void setEditable(bool editable);

    /// Whether it has the frame of the style's line edits, with their room around the text.
    /// Default: false.
    bool isBezeled() const;
    void setBezeled(bool bezeled);
    /// Whether `backgroundColor` fills it, inside the bezel if it has one. Default: false.
    bool drawsBackground() const;
    void setDrawsBackground(bool draws);
    QColor backgroundColor() const; ///< invalid, as made, for the palette's
    void setBackgroundColor(const QColor &color);
    /// Shown while there is no text.
    QString placeholderString() const;
    void setPlaceholderString(const QString &string);
    /// Whether a link opens in the desktop's program for it. Default: true.
    bool opensLinks() const;
    void setOpensLinks(bool opens);

    /// From the upper edge to the baseline of the first line, in device-independent pixels. For
    /// constraints, at the size that it asks for.
    double firstBaselineOffsetFromTop() const;
    /// The same from the baseline of the last line to the lower edge.
    double lastBaselineOffsetFromBottom() const;

    /// Part of the layout pass, see <pellarvine/Platform/NSView.h>.
    Q_INVOKABLE virtual void performLayout();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

public Q_SLOTS:
    void selectAll(); ///< of a text to select or edit; leaves the focus where it is

Q_SIGNALS:
    void textEdited(const QString &string); ///< by the user
    /// With Return in a single line, Ctrl+Return in several, and when the focus leaves after an
    /// edit.
    void editingFinished();
    /// By mouse or key, in a text that is not editable; before the link opens.
    void linkActivated(const QUrl &link);
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

    /// What it asks for if a text that wraps had rather be higher than wider than `width`; 0 for a
    /// width that is good to read. In device-independent pixels.
    QSize sizeWithin(double width) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
