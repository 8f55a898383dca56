// SPDX-License-Identifier: MIT
#include "Controls/NSTextField.h"

#include "Controls/TextFieldEditor.h"
#include "Drawing/NSColor.h"
#include "Text/NSAttributedString+Text.h"
#include "Text/NSMutableAttributedString.h"
#include "View/AccessibleControl.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QDesktopServices>
#include <QEvent>
#include <QHash>
#include <QHelpEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionFrame>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using Pellarvine::detail::TextFieldEditor;

namespace NS {

namespace {

// In average characters.
constexpr int readableWidth = 80;
constexpr int editableWidth = 17; // as Qt's own line edits
constexpr int smallestWidth = 4;

class AccessibleTextField : public detail::AccessibleControl
{
public:
    explicit AccessibleTextField(TextField *field)
        : AccessibleControl(field, QAccessible::Client)
    { }

    // What can be selected or edited is a part of its own below, with all that belongs to that.
    QAccessible::Role role() const override
    {
        return childCount() > 0 ? QAccessible::Client : QAccessible::StaticText;
    }

protected:
    QString ownName() const override
    {
        return childCount() > 0 ? QString() : static_cast<TextField *>(widget())->stringValue();
    }
};

QString plainText(const QTextDocument &document)
{
    // toPlainText() would also turn non-breaking spaces into plain ones.
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

bool hasLinks(const AttributedString &text)
{
    return std::any_of(text.runs().begin(), text.runs().end(),
                       [](const auto &run) { return run.attributes.contains(LinkAttributeName); });
}

// The longest part of a line that fits with an ellipsis, where a predicate says what fits.
template <typename Fits>
AttributedString elidedLine(const AttributedString &line, Qt::TextElideMode mode, Fits fits)
{
    const qsizetype length = line.length();
    const auto withoutMiddle = [&](qsizetype head, qsizetype tail) {
        MutableAttributedString result(line);
        const Attributes attributes = line.attributes(std::max<qsizetype>(0, head - 1));
        result.replaceCharacters(head, length - head - tail,
                                 AttributedString(QString(QChar(0x2026)), attributes));
        return AttributedString(result);
    };
    const auto keeping = [&](qsizetype count) {
        const qsizetype head = mode == Qt::ElideLeft     ? 0
                               : mode == Qt::ElideMiddle ? (count + 1) / 2
                                                         : count;
        // Nothing that a reader sees as one character is cut in two, and no space is left over.
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line.string());
        const auto boundary = [&](qsizetype place, bool isForward) {
            finder.setPosition(place);
            if (finder.isAtBoundary())
                return place;
            return isForward ? finder.toNextBoundary() : finder.toPreviousBoundary();
        };
        qsizetype headEnd = boundary(head, false);
        qsizetype tailStart = boundary(length - (count - head), true);
        while (headEnd > 0 && line.string().at(headEnd - 1).isSpace())
            --headEnd;
        while (tailStart < length && line.string().at(tailStart).isSpace())
            ++tailStart;
        return withoutMiddle(headEnd, length - tailStart);
    };
    qsizetype low = 0;
    for (qsizetype high = length; low < high;) {
        const qsizetype middle = (low + high + 1) / 2;
        if (fits(keeping(middle)))
            low = middle;
        else
            high = middle - 1;
    }
    return keeping(low);
}

} // namespace

struct TextField::Private
{
    explicit Private(TextField *field)
        : q(field)
    { }

    template <typename Value, typename Signal>
    bool set(Value &kept, const Value &value, Signal signal)
    {
        if (value == kept)
            return false;
        kept = value;
        Q_EMIT(q->*signal)(value);
        return true;
    }

    void setText(const AttributedString &value);
    void applyText();
    void applyFormat();
    void invalidate();
    void updateEditor();
    void updateEditorPalette();
    void placeEditor();
    void contentsChange(int position, int removed, int added);
    void contentsChanged();

    QColor effectiveTextColor() const;
    AttributedString decorated(const AttributedString &plain) const;
    Qt::Alignment absolute(Qt::Alignment horizontal) const;
    QMargins insets() const;
    QRect textRect() const;
    QSize textSize(int width) const;
    double heightOfLines(QTextDocument &laidOut) const;
    double lineWidth(const AttributedString &line) const;
    AttributedString cut(int width) const;
    QTextDocument &shown(int width);
    void fill(QTextDocument &target, const AttributedString &value) const;
    void setFormat(QTextDocument &target) const;

    TextField *q;
    AttributedString text;
    QColor textColor;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    bool wraps = true;
    double preferredMaxLayoutWidth = 0.0;
    int maximumNumberOfLines = 0;
    Qt::TextElideMode elideMode = Qt::ElideRight;
    bool selectable = false;
    bool editable = false;
    bool bezeled = false;
    bool drawsBackground = false;
    QColor backgroundColor;
    QString placeholderString;
    bool opensLinks = true;

    mutable QTextDocument document;
    std::unique_ptr<QTextDocument> elided; // of the width below; null if nothing is
    int elidedWidth = -1;
    QPointer<detail::TextFieldEditor> editor; // while there is anything to do in it
    bool isApplying = false;
    bool hasChanged = false; // within one edit
    bool isEdited = false; // since editingFinished
    mutable QHash<int, QSize> sizes; // by width; -1 for as wide as it wants
};

TextField::TextField(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    detail::makeAccessible<TextField, AccessibleTextField>();
    d->document.setDocumentMargin(0);
    d->applyFormat();
    connect(&d->document, &QTextDocument::contentsChange, this,
            [this](int position, int removed, int added) {
                d->contentsChange(position, removed, added);
            });
    connect(&d->document, &QTextDocument::contentsChanged, this, [this] { d->contentsChanged(); });
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::Label);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TextField::~TextField()
{
    d->document.disconnect(this);
    if (d->editor)
        d->editor->disconnect(this);
    delete d->editor; // before its document
}

// Properties

QString TextField::stringValue() const
{
    return d->text.string();
}

void TextField::setStringValue(const QString &string)
{
    setAttributedStringValue(AttributedString(string));
}

AttributedString TextField::attributedStringValue() const
{
    return d->text;
}

void TextField::setAttributedStringValue(const AttributedString &text)
{
    if (text == d->text)
        return;
    const bool isOtherString = text.string() != d->text.string();
    d->setText(text);
    d->isEdited = false;
    if (isOtherString)
        Q_EMIT stringValueChanged(text.string());
    Q_EMIT attributedStringValueChanged(text);
}

QColor TextField::textColor() const
{
    return d->textColor;
}

void TextField::setTextColor(const QColor &color)
{
    if (!d->set(d->textColor, color, &TextField::textColorChanged))
        return;
    d->updateEditorPalette();
    update();
}

Qt::Alignment TextField::alignment() const
{
    return d->alignment;
}

void TextField::setAlignment(Qt::Alignment alignment)
{
    if (!d->set(d->alignment, alignment, &TextField::alignmentChanged))
        return;
    d->applyFormat();
    d->placeEditor();
}

bool TextField::wraps() const
{
    return d->wraps;
}

void TextField::setWraps(bool wraps)
{
    if (!d->set(d->wraps, wraps, &TextField::wrapsChanged))
        return;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wraps);
    setSizePolicy(policy);
    d->applyFormat();
    if (d->editor)
        d->editor->setHasLines(wraps);
    d->invalidate();
}

double TextField::preferredMaxLayoutWidth() const
{
    return d->preferredMaxLayoutWidth;
}

void TextField::setPreferredMaxLayoutWidth(double width)
{
    if (d->set(d->preferredMaxLayoutWidth, width, &TextField::preferredMaxLayoutWidthChanged))
        updateGeometry();
}

int TextField::maximumNumberOfLines() const
{
    return d->maximumNumberOfLines;
}

void TextField::setMaximumNumberOfLines(int count)
{
    if (d->set(d->maximumNumberOfLines, std::max(0, count),
               &TextField::maximumNumberOfLinesChanged))
        d->invalidate();
}

Qt::TextElideMode TextField::elideMode() const
{
    return d->elideMode;
}

void TextField::setElideMode(Qt::TextElideMode mode)
{
    if (d->set(d->elideMode, mode, &TextField::elideModeChanged))
        d->invalidate();
}

bool TextField::isSelectable() const
{
    return d->selectable || d->editable;
}

void TextField::setSelectable(bool selectable)
{
    if (d->set(d->selectable, selectable, &TextField::selectableChanged))
        d->updateEditor();
}

bool TextField::isEditable() const
{
    return d->editable;
}

void TextField::setEditable(bool editable)
{
    if (d->set(d->editable, editable, &TextField::editableChanged))
        d->updateEditor();
}

bool TextField::isBezeled() const
{
    return d->bezeled;
}

void TextField::setBezeled(bool bezeled)
{
    if (!d->set(d->bezeled, bezeled, &TextField::bezeledChanged))
        return;
    d->updateEditorPalette();
    d->invalidate();
}

bool TextField::drawsBackground() const
{
    return d->drawsBackground;
}

void TextField::setDrawsBackground(bool draws)
{
    if (!d->set(d->drawsBackground, draws, &TextField::drawsBackgroundChanged))
        return;
    d->updateEditorPalette();
    update();
}

QColor TextField::backgroundColor() const
{
    return d->backgroundColor;
}

void TextField::setBackgroundColor(const QColor &color)
{
    if (d->set(d->backgroundColor, color, &TextField::backgroundColorChanged))
        update();
}

QString TextField::placeholderString() const
{
    return d->placeholderString;
}

void TextField::setPlaceholderString(const QString &string)
{
    if (!d->set(d->placeholderString, string, &TextField::placeholderStringChanged))
        return;
    if (d->editor)
        d->editor->setPlaceholderText(string);
    d->invalidate();
}

bool TextField::opensLinks() const
{
    return d->opensLinks;
}

void TextField::setOpensLinks(bool opens)
{
    d->set(d->opensLinks, opens, &TextField::opensLinksChanged);
}

void TextField::selectAll()
{
    if (d->editor)
        d->editor->selectAll();
}

void TextField::performLayout()
{
    d->placeEditor();
}

// Sizes

QSize TextField::sizeHint() const
{
    ensurePolished();
    const QMargins insets = d->insets();
    const int across = insets.left() + insets.right();
    const int character = fontMetrics().averageCharWidth();
    int width = d->textSize(-1).width();
    if (d->wraps) {
        width = std::min(width, d->preferredMaxLayoutWidth > 0.0
                                        ? int(d->preferredMaxLayoutWidth) - across
                                        : readableWidth * character);
    }
    if (d->editable)
        width = std::max(width, editableWidth * character);
    return { std::max(0, width) + across,
             d->textSize(d->wraps ? width : -1).height() + insets.top() + insets.bottom() };
}

QSize TextField::minimumSizeHint() const
{
    ensurePolished();
    const QMargins insets = d->insets();
    const bool canShrink = d->wraps || d->editor || d->elideMode != Qt::ElideNone;
    const QSize natural = d->textSize(-1);
    const int smallest = smallestWidth * fontMetrics().averageCharWidth();
    const int line = int(std::ceil(QFontMetricsF(font()).lineSpacing()));
    return QSize(canShrink ? std::min(natural.width(), smallest) : natural.width(),
                 d->wraps ? std::min(natural.height(), line) : natural.height())
            .grownBy(insets);
}

bool TextField::hasHeightForWidth() const
{
    return d->wraps;
}

int TextField::heightForWidth(int width) const
{
    if (!d->wraps)
        return -1;
    ensurePolished();
    const QMargins insets = d->insets();
    const int inner = std::max(1, width - insets.left() - insets.right());
    return d->textSize(inner).height() + insets.top() + insets.bottom();
}

double TextField::firstBaselineOffsetFromTop() const
{
    const QTextLayout *const layout = d->document.firstBlock().layout();
    d->textSize(-1);
    const double ascent =
            layout->lineCount() > 0 ? layout->lineAt(0).ascent() : QFontMetricsF(font()).ascent();
    return d->insets().top() + ascent;
}

double TextField::lastBaselineOffsetFromBottom() const
{
    const QTextLayout *const layout = d->document.lastBlock().layout();
    d->textSize(-1);
    const double descent = layout->lineCount() > 0
                                   ? layout->lineAt(layout->lineCount() - 1).descent()
                                   : QFontMetricsF(font()).descent();
    return d->insets().bottom() + descent;
}

// As much as Qt's line edit in the same style leaves around its text.
QMargins TextField::Private::insets() const
{
    if (!bezeled)
        return {};
    QStyleOptionFrame option;
    option.initFrom(q);
    const QStyle *const style = q->style();
    option.lineWidth = style->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, q);
    const int line = q->fontMetrics().height();
    const int whole = style->sizeFromContents(QStyle::CT_LineEdit, &option,
                                              { 100, std::max(line, 14) + 2 }, q)
                              .height();
    const int above = std::max(0, whole - line) / 2;
    const int beside = option.lineWidth + 4;
    return { beside, above, beside, std::max(0, whole - line) - above };
}

QRect TextField::Private::textRect() const
{
    return q->rect().marginsRemoved(insets());
}

double TextField::Private::heightOfLines(QTextDocument &laidOut) const
{
    const double whole = laidOut.size().height();
    int left = wraps ? maximumNumberOfLines : 0;
    if (left == 0)
        return whole;
    for (QTextBlock block = laidOut.begin(); block.isValid(); block = block.next()) {
        const QRectF place = laidOut.documentLayout()->blockBoundingRect(block);
        const QTextLayout *const layout = block.layout();
        if (layout->lineCount() < left) {
            left -= layout->lineCount();
            continue;
        }
        const QRectF line = layout->lineAt(left - 1).rect();
        return std::min(whole, place.top() + line.bottom());
    }
    return whole;
}

QSize TextField::Private::textSize(int width) const
{
    const auto known = sizes.constFind(width);
    if (known != sizes.constEnd())
        return *known;
    // The document shows at another width meanwhile: nobody must see that.
    const QSignalBlocker blocker(document.documentLayout());
    const QSizeF page = document.pageSize();
    document.setTextWidth(width);
    QSizeF size(document.idealWidth(), heightOfLines(document));
    document.setPageSize(page);
    if (document.isEmpty() && !placeholderString.isEmpty() && width < 0)
        size.setWidth(QFontMetricsF(q->font()).horizontalAdvance(placeholderString));
    const QSize rounded(int(std::ceil(size.width())), int(std::ceil(size.height())));
    sizes.insert(width, rounded);
    return rounded;
}

// Text

void TextField::Private::setText(const AttributedString &value)
{
    text = value;
    applyText();
    updateEditor();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(q, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

QColor TextField::Private::effectiveTextColor() const
{
    const bool isOnBase = drawsBackground || bezeled;
    const QPalette palette = q->palette();
    if (textColor.isValid() && q->isEnabled())
        return textColor;
    return palette.color(isOnBase ? QPalette::Text : QPalette::WindowText);
}

// Links look like links unless they say otherwise.
AttributedString TextField::Private::decorated(const AttributedString &plain) const
{
    if (!hasLinks(plain))
        return plain;
    MutableAttributedString result(plain);
    for (const auto &run : plain.runs()) {
        if (!run.attributes.contains(LinkAttributeName))
            continue;
        Attributes looks { { ForegroundColorAttributeName, q->palette().color(QPalette::Link) },
                           { UnderlineStyleAttributeName, 1 } };
        looks.insert(run.attributes);
        result.setAttributes(looks, run.location, run.length);
    }
    return result;
}

// The side that text begins at is the layout's, whatever the script: fields below each other line up.
Qt::Alignment TextField::Private::absolute(Qt::Alignment horizontal) const
{
    return QStyle::visualAlignment(q->layoutDirection(), horizontal & Qt::AlignHorizontal_Mask)
           | Qt::AlignAbsolute;
}

void TextField::Private::setFormat(QTextDocument &target) const
{
    target.setDefaultFont(q->font());
    QTextOption option(absolute(alignment));
    option.setTextDirection(Qt::LayoutDirectionAuto); // by the text; Qt starts with the program's
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    target.setDefaultTextOption(option);
}

void TextField::Private::fill(QTextDocument &target, const AttributedString &value) const
{
    setDocumentText(target, decorated(value));
    for (QTextBlock block = target.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (!format.hasProperty(QTextFormat::BlockAlignment)
            || (format.alignment() & Qt::AlignAbsolute)
            || format.layoutDirection() != Qt::LayoutDirectionAuto)
            continue;
        format.setAlignment(absolute(format.alignment()));
        QTextCursor(block).setBlockFormat(format);
    }
    target.clearUndoRedoStacks();
}

void TextField::Private::applyText()
{
    isApplying = true;
    fill(document, text);
    isApplying = false;
    invalidate();
}

void TextField::Private::applyFormat()
{
    isApplying = true;
    setFormat(document);
    isApplying = false;
    invalidate();
}

void TextField::Private::invalidate()
{
    sizes.clear();
    elided.reset();
    elidedWidth = -1;
    placeEditor();
    q->updateGeometry();
    q->update();
}

void TextField::Private::contentsChange(int position, int removed, int added)
{
    if (isApplying)
        return;
    const QString now = plainText(document);
    if (now == text.string())
        return;
    MutableAttributedString changed(text);
    changed.replaceCharacters(position, removed, now.mid(position, added));
    // Qt's counts sometimes include the end of the document.
    text = changed.string() == now ? AttributedString(changed) : AttributedString(now);
    hasChanged = true;
}

void TextField::Private::contentsChanged()
{
    if (isApplying || !std::exchange(hasChanged, false))
        return;
    isEdited = true;
    invalidate();
    const QPointer<TextField> self(q);
    const AttributedString now = text;
    Q_EMIT q->textEdited(now.string());
    if (self)
        Q_EMIT q->stringValueChanged(now.string());
    if (self)
        Q_EMIT q->attributedStringValueChanged(now);
}

double TextField::Private::lineWidth(const AttributedString &line) const
{
    QTextLayout layout(line.string(), q->font());
    layout.setFormats(layoutFormats(decorated(line)));
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.lineAt(0).naturalTextWidth();
}

// What fits: each line of its own, or all in as many lines as there may be.
AttributedString TextField::Private::cut(int width) const
{
    const auto fits = [&](const AttributedString &line) {
        return lineWidth(line) <= width;
    };
    const QString &string = text.string();
    if (!wraps) {
        if (textSize(-1).width() <= width)
            return text;
        MutableAttributedString result;
        for (qsizetype start = 0; start <= string.size();) {
            const qsizetype lineEnd = string.indexOf(u'\n', start);
            const qsizetype end = lineEnd < 0 ? string.size() : lineEnd;
            const AttributedString line = text.attributedSubstring(start, end - start);
            result.append(fits(line) ? line : elidedLine(line, elideMode, fits));
            if (lineEnd >= 0)
                result.append(text.attributedSubstring(lineEnd, 1));
            start = end + 1;
        }
        return result;
    }
    if (maximumNumberOfLines == 0)
        return text;
    document.setTextWidth(width);
    document.size();
    int left = maximumNumberOfLines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextLayout *const layout = block.layout();
        if (layout->lineCount() < left) {
            left -= layout->lineCount();
            continue;
        }
        const QTextLine line = layout->lineAt(left - 1);
        const qsizetype start = block.position() + line.textStart();
        const qsizetype blockEnd = block.position() + block.length() - 1;
        const bool isLast = !block.next().isValid() && left == layout->lineCount();
        if (isLast)
            return text;
        MutableAttributedString result(text.attributedSubstring(0, start));
        result.append(elidedLine(text.attributedSubstring(start, blockEnd - start), Qt::ElideRight,
                                 fits));
        return result;
    }
    return text;
}

QTextDocument &TextField::Private::shown(int width)
{
    const bool canElide = elideMode != Qt::ElideNone && width > 0;
    if (canElide && width != elidedWidth) {
        elidedWidth = width;
        elided.reset();
        const AttributedString fitting = cut(width);
        if (fitting.string() != text.string()) {
            elided = std::make_unique<QTextDocument>();
            elided->setDocumentMargin(0);
            setFormat(*elided);
            fill(*elided, fitting);
        }
    }
    return elided && canElide ? *elided : document;
}

// The editor

void TextField::Private::updateEditor()
{
    const bool isWanted = selectable || editable || hasLinks(text);
    if (!isWanted && editor) {
        editor->disconnect(q);
        editor->hide();
        editor->setDocument(nullptr);
        editor->deleteLater();
        editor = nullptr;
        q->setFocusProxy(nullptr);
        q->setFocusPolicy(Qt::NoFocus);
        document.setTextWidth(-1);
        applyFormat();
    }
    if (!isWanted)
        return;
    const bool isNew = !editor;
    if (isNew) {
        isApplying = true;
        editor = new detail::TextFieldEditor(&document, q);
        isApplying = false;
        connect(editor, &QTextBrowser::anchorClicked, q, [this](const QUrl &link) {
            const bool opens = opensLinks;
            Q_EMIT q->linkActivated(link);
            if (opens)
                QDesktopServices::openUrl(link);
        });
        connect(editor, &detail::TextFieldEditor::returned, q, [this] {
            isEdited = false;
            Q_EMIT q->editingFinished();
        });
        connect(editor, &detail::TextFieldEditor::left, q, [this] {
            if (std::exchange(isEdited, false))
                Q_EMIT q->editingFinished();
        });
        connect(editor, &detail::TextFieldEditor::focusChanged, q, [this] { q->update(); });
    }
    isApplying = true;
    editor->setHasLines(wraps);
    editor->setKind(selectable, editable, hasLinks(text));
    editor->setPlaceholderText(placeholderString);
    isApplying = false;
    q->setFocusPolicy(editor->focusPolicy());
    q->setFocusProxy(editor);
    updateEditorPalette();
    applyFormat();
    if (isNew)
        editor->show();
}

void TextField::Private::updateEditorPalette()
{
    if (!editor)
        return;
    QPalette own = q->palette();
    own.setColor(QPalette::Base, Qt::transparent);
    for (const auto group : { QPalette::Active, QPalette::Inactive })
        own.setColor(group, QPalette::Text, effectiveTextColor());
    own.setColor(QPalette::Disabled, QPalette::Text,
                 q->palette().color(QPalette::Disabled, QPalette::Text));
    editor->setPalette(own);
}

void TextField::Private::placeEditor()
{
    if (!editor)
        return;
    QRect place = textRect();
    const int height = textSize(wraps ? std::max(1, place.width()) : -1).height();
    const int room = place.height() - height;
    if (room > 0 && !(alignment & Qt::AlignTop)) {
        place.setHeight(height);
        place.moveTop(place.top() + ((alignment & Qt::AlignBottom) ? room : room / 2));
    }
    editor->setGeometry(place);
}

// Events

bool TextField::event(QEvent *event)
{
    // The whole text, where only a part of it shows.
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !d->editor) {
        if (&d->shown(d->textRect().width()) != &d->document) {
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                               stringValue().toHtmlEscaped().replace(u'\n', u"<br>"_s), this);
            return true;
        }
    }
    return QWidget::event(event);
}

void TextField::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
        d->applyFormat();
        break;
    case QEvent::LayoutDirectionChange:
        d->applyFormat();
        if (!d->editable)
            d->applyText();
        break;
    case QEvent::PaletteChange:
        if (hasLinks(d->text) && !d->editable)
            d->applyText();
        d->updateEditorPalette();
        update();
        break;
    case QEvent::EnabledChange:
        d->updateEditorPalette();
        update();
        break;
    default:
        break;
    }
}

void TextField::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool hasFocus = d->editor && d->editor->hasFocus();
    QStyleOptionFrame option;
    option.initFrom(this);
    option.state.setFlag(QStyle::State_HasFocus, hasFocus);
    if (d->backgroundColor.isValid())
        option.palette.setColor(QPalette::Base, d->backgroundColor);
    if (d->bezeled) {
        option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this);
        option.state |= QStyle::State_Sunken;
        option.state.setFlag(QStyle::State_ReadOnly, !d->editable);
        if (!d->drawsBackground)
            option.palette.setBrush(QPalette::Base, Qt::NoBrush);
        style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    } else {
        if (d->drawsBackground)
            painter.fillRect(rect(), option.palette.color(QPalette::Base));
        if (d->editor && !d->editable && d->editor->isFocusedByKeyboard()) {
            QStyleOptionFocusRect ring;
            ring.initFrom(this);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
        }
    }
    if (d->editor)
        return;

    const QRect place = d->textRect();
    const bool showsPlaceholder = d->text.isEmpty() && !d->placeholderString.isEmpty();
    if (showsPlaceholder) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        const int flags = int(QStyle::visualAlignment(layoutDirection(), d->alignment))
                          | (d->wraps ? Qt::TextWordWrap : 0);
        painter.drawText(place, flags, d->placeholderString);
        return;
    }
    QTextDocument &document = d->shown(place.width());
    document.setTextWidth(place.width());
    const double room = place.height() - d->heightOfLines(document);
    double top = place.top();
    if (room > 0 && !(d->alignment & Qt::AlignTop))
        top += (d->alignment & Qt::AlignBottom) ? room : std::floor(room / 2);
    painter.setClipRect(rect());
    painter.translate(place.left(), top);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.palette.setColor(QPalette::Text, d->effectiveTextColor());
    document.documentLayout()->draw(&painter, context);
}

void TextField::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->placeEditor();
}

} // namespace NS
