// SPDX-License-Identifier: MIT
#include "Controls/NSTextField.h"

#include "Base/Assign.h"
#include "Controls/AccessibleTextField.h"
#include "Controls/TextFieldContents.h"
#include "Controls/TextFieldEditor.h"
#include "Drawing/Shades.h"

#include <QAccessible>
#include <QDesktopServices>
#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionFrame>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

namespace {

// In average characters.
constexpr int readableWidth = 80;
constexpr int editableWidth = 17; // as Qt's own line edits
constexpr int smallestWidth = 4;

} // namespace

struct TextField::Private
{
    explicit Private(TextField *field)
        : q(field)
    { }

    void setText(const AttributedString &value);
    void fill(const AttributedString &value);
    void applyFormat();
    void invalidate();
    void updateEditor();
    void updateEditorPalette();
    void placeEditor();
    void drawPlaceholder(QPainter &painter) const;
    void textWasEdited();
    void tellOfText(bool isOtherString);

    QColor effectiveTextColor() const;
    detail::TextFieldFormat format() const;
    QMargins insets() const;
    QRect textRect() const;
    QSize textSize(int width) const;

    TextField *q;
    detail::TextFieldContents contents;
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

    QPointer<detail::TextFieldEditor> editor; // while there is anything to do in it
    bool isEdited = false; // since editingFinished
};

TextField::TextField(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    detail::makeAccessible<TextField, detail::AccessibleTextField>();
    d->applyFormat();
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::Label);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

TextField::~TextField()
{
    d->contents.disconnect(this);
    if (d->editor)
        d->editor->disconnect(this);
    delete d->editor; // before its document
}

// Properties

QString TextField::stringValue() const
{
    return d->contents.text().string();
}

void TextField::setStringValue(const QString &string)
{
    setAttributedStringValue(AttributedString(string));
}

AttributedString TextField::attributedStringValue() const
{
    return d->contents.text();
}

void TextField::setAttributedStringValue(const AttributedString &text)
{
    if (text == d->contents.text())
        return;
    const bool isOtherString = text.string() != d->contents.text().string();
    d->setText(text);
    d->isEdited = false;
    d->tellOfText(isOtherString);
}

QColor TextField::textColor() const
{
    return d->textColor;
}

void TextField::setTextColor(const QColor &color)
{
    if (!detail::assign(d->textColor, color))
        return;
    d->updateEditorPalette();
    update();
    Q_EMIT textColorChanged(color);
}

Qt::Alignment TextField::alignment() const
{
    return d->alignment;
}

void TextField::setAlignment(Qt::Alignment alignment)
{
    if (!detail::assign(d->alignment, alignment))
        return;
    d->applyFormat();
    Q_EMIT alignmentChanged(alignment);
}

bool TextField::wraps() const
{
    return d->wraps;
}

void TextField::setWraps(bool wraps)
{
    if (!detail::assign(d->wraps, wraps))
        return;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wraps);
    setSizePolicy(policy);
    if (d->editor)
        d->editor->setHasLines(wraps);
    d->applyFormat();
    Q_EMIT wrapsChanged(wraps);
}

double TextField::preferredMaxLayoutWidth() const
{
    return d->preferredMaxLayoutWidth;
}

void TextField::setPreferredMaxLayoutWidth(double width)
{
    if (!detail::assign(d->preferredMaxLayoutWidth, width))
        return;
    updateGeometry();
    Q_EMIT preferredMaxLayoutWidthChanged(width);
}

int TextField::maximumNumberOfLines() const
{
    return d->maximumNumberOfLines;
}

void TextField::setMaximumNumberOfLines(int count)
{
    count = std::max(0, count);
    if (!detail::assign(d->maximumNumberOfLines, count))
        return;
    d->applyFormat();
    Q_EMIT maximumNumberOfLinesChanged(count);
}

Qt::TextElideMode TextField::elideMode() const
{
    return d->elideMode;
}

void TextField::setElideMode(Qt::TextElideMode mode)
{
    if (!detail::assign(d->elideMode, mode))
        return;
    d->applyFormat();
    Q_EMIT elideModeChanged(mode);
}

bool TextField::isSelectable() const
{
    return d->selectable || d->editable;
}

void TextField::setSelectable(bool selectable)
{
    if (!detail::assign(d->selectable, selectable))
        return;
    d->updateEditor();
    Q_EMIT selectableChanged(selectable);
}

bool TextField::isEditable() const
{
    return d->editable;
}

void TextField::setEditable(bool editable)
{
    if (!detail::assign(d->editable, editable))
        return;
    d->updateEditor();
    Q_EMIT editableChanged(editable);
}

bool TextField::isBezeled() const
{
    return d->bezeled;
}

void TextField::setBezeled(bool bezeled)
{
    if (!detail::assign(d->bezeled, bezeled))
        return;
    d->updateEditorPalette();
    d->invalidate();
    Q_EMIT bezeledChanged(bezeled);
}

bool TextField::drawsBackground() const
{
    return d->drawsBackground;
}

void TextField::setDrawsBackground(bool draws)
{
    if (!detail::assign(d->drawsBackground, draws))
        return;
    d->updateEditorPalette();
    update();
    Q_EMIT drawsBackgroundChanged(draws);
}

QColor TextField::backgroundColor() const
{
    return d->backgroundColor;
}

void TextField::setBackgroundColor(const QColor &color)
{
    if (!detail::assign(d->backgroundColor, color))
        return;
    update();
    Q_EMIT backgroundColorChanged(color);
}

QString TextField::placeholderString() const
{
    return d->placeholderString;
}

void TextField::setPlaceholderString(const QString &string)
{
    if (!detail::assign(d->placeholderString, string))
        return;
    d->invalidate();
    Q_EMIT placeholderStringChanged(string);
}

bool TextField::opensLinks() const
{
    return d->opensLinks;
}

void TextField::setOpensLinks(bool opens)
{
    if (detail::assign(d->opensLinks, opens))
        Q_EMIT opensLinksChanged(opens);
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
    return sizeWithin(d->preferredMaxLayoutWidth);
}

QSize TextField::sizeWithin(double maxLayoutWidth) const
{
    ensurePolished();
    const QMargins insets = d->insets();
    const int across = insets.left() + insets.right();
    const int character = fontMetrics().averageCharWidth();
    int width = d->textSize(-1).width();
    if (d->wraps) {
        const bool isGiven = maxLayoutWidth > 0.0;
        const double widest = isGiven ? maxLayoutWidth - across : readableWidth * character;
        width = int(std::clamp(widest, 0.0, double(width))); // no limit may be infinite
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
    const int line = int(std::ceil(d->contents.firstHeight()));
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
    return d->insets().top() + d->contents.firstAscent();
}

double TextField::lastBaselineOffsetFromBottom() const
{
    return d->insets().bottom() + d->contents.lastDescent();
}

// The margins that Qt's line edit has around its text in the same style.
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

QSize TextField::Private::textSize(int width) const
{
    QSize size = contents.size(width);
    if (width < 0 && contents.text().isEmpty() && !placeholderString.isEmpty()) {
        const double advance = QFontMetricsF(q->font()).horizontalAdvance(placeholderString);
        size.setWidth(int(std::ceil(advance)));
    }
    return size;
}

// Text

void TextField::Private::setText(const AttributedString &value)
{
    fill(value);
    updateEditor();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(q, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void TextField::Private::fill(const AttributedString &value)
{
    const bool isSameString = value.string() == contents.text().string();
    const QTextCursor before = editor ? editor->textCursor() : QTextCursor();
    const int anchor = before.anchor();
    const int position = before.position();
    contents.setLinkColor(detail::linkColor(q->palette()));
    contents.setText(value);
    // Qt leaves the cursor at the end, from which Tab does not reach the links.
    if (editor && isSameString)
        editor->select(anchor, position);
    else if (editor && !(editable && editor->hasFocus()))
        editor->select(0, 0);
    if (editor)
        editor->layOutAnew();
    invalidate();
}

QColor TextField::Private::effectiveTextColor() const
{
    const bool isOnBase = drawsBackground || bezeled;
    const QPalette palette = q->palette();
    if (textColor.isValid() && q->isEnabled())
        return textColor;
    return palette.color(isOnBase ? QPalette::Text : QPalette::WindowText);
}

detail::TextFieldFormat TextField::Private::format() const
{
    return { .font = q->font(),
             .alignment = alignment,
             .direction = q->layoutDirection(),
             .wraps = wraps,
             .maximumNumberOfLines = maximumNumberOfLines,
             .elideMode = elideMode,
             .linkColor = contents.format().linkColor };
}

void TextField::Private::applyFormat()
{
    contents.setFormat(format());
    if (editor)
        editor->layOutAnew();
    invalidate();
}

void TextField::Private::invalidate()
{
    placeEditor();
    q->updateGeometry();
    q->update();
}

void TextField::Private::textWasEdited()
{
    isEdited = true;
    invalidate();
    const QPointer<TextField> self(q);
    const AttributedString now = contents.text();
    Q_EMIT q->textEdited(now.string());
    if (self && contents.text() == now)
        tellOfText(true);
}

// A slot may delete the field, or set another text, which is then reported first.
void TextField::Private::tellOfText(bool isOtherString)
{
    const QPointer<TextField> self(q);
    const AttributedString now = contents.text();
    if (isOtherString)
        Q_EMIT q->stringValueChanged(now.string());
    if (self && contents.text() == now)
        Q_EMIT q->attributedStringValueChanged(now);
}

// The editor

void TextField::Private::updateEditor()
{
    const bool isWanted = selectable || editable || detail::hasLinks(contents.text());
    if (!isWanted && editor) {
        editor->disconnect(q);
        editor->hide();
        editor->setDocument(nullptr);
        editor->deleteLater();
        editor = nullptr;
        q->setFocusProxy(nullptr);
        q->setFocusPolicy(Qt::NoFocus);
        contents.disconnect(q);
        contents.dropDocument();
        invalidate();
    }
    if (!isWanted)
        return;
    const bool isNew = !editor;
    if (isNew) {
        connect(&contents, &detail::TextFieldContents::edited, q, [this] { textWasEdited(); });
        contents.changeLooks(
                [this] { editor = new detail::TextFieldEditor(&contents.document(), q); });
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
        connect(editor, &detail::TextFieldEditor::linkFocused, q,
                [this] { detail::AccessibleTextField::tellOfFocusedLink(q); });
        connect(editor, &detail::TextFieldEditor::focusChanged, q, [this] { q->update(); });
    }
    contents.changeLooks([this] {
        editor->setHasLines(wraps);
        editor->setKind(selectable, editable, detail::hasLinks(contents.text()));
    });
    q->setFocusPolicy(editor->focusPolicy());
    if (isNew)
        QWidget::setTabOrder(q, editor); // other widgets may have come since the field
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
    const int whole = textSize(wraps ? std::max(1, place.width()) : -1).height();
    // Text higher than its place scrolls, but a single line is not cut.
    const int least = std::min(whole, int(std::ceil(contents.firstHeight())));
    const int height = std::clamp(place.height(), least, whole);
    const int room = place.height() - height;
    if (room != 0 && !(alignment & Qt::AlignTop)) {
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
        if (d->contents.isElided(d->textRect().size())) {
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                               Qt::convertFromPlainText(stringValue(), Qt::WhiteSpaceNormal), this);
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
            d->fill(AttributedString(d->contents.text()));
        break;
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
        if (detail::hasLinks(d->contents.text()))
            d->fill(AttributedString(d->contents.text()));
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
    if (d->contents.text().isEmpty() && !(d->editor && d->editor->isComposing()))
        d->drawPlaceholder(painter);
    if (d->editor)
        return;
    painter.setClipRect(rect());
    painter.setPen(d->effectiveTextColor());
    d->contents.draw(painter, d->textRect());
}

// Also below an editor, whose own placeholder would be at the left side always.
void TextField::Private::drawPlaceholder(QPainter &painter) const
{
    const QRect place = textRect();
    painter.setPen(q->palette().color(QPalette::PlaceholderText));
    const Qt::Alignment side = QStyle::visualAlignment(q->layoutDirection(), alignment);
    if (wraps)
        painter.drawText(place, int(side) | Qt::TextWordWrap, placeholderString);
    else
        painter.drawText(
                place, int(side),
                q->fontMetrics().elidedText(placeholderString, Qt::ElideRight, place.width()));
}

void TextField::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    d->placeEditor();
}

} // namespace NS
