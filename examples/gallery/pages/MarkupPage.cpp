// SPDX-License-Identifier: MIT
#include "../FlatStyle.h"
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Platform/NSAttributedString+Text.h>
#include <pellarvine/Shared/Font.h>
#include <pellarvine/Shared/MarkupParser.h>

#include <QAbstractButton>
#include <QBoxLayout>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

// The delimiters of a construct, and a sample text.
struct Construct
{
    QString opening;
    QString text;
    QString closing;

    QString markup() const { return opening + text + closing; }
};

MarkupParser parserFor(const QPalette &palette)
{
    const QFont font = Theme::font(Theme::body);
    MarkupParser parser(font, boldVariant(font), italicVariant(font),
                        withSize(Theme::font(Theme::monospace), font.pointSizeF()));
    parser.setColor(NS::Color(palette.color(QPalette::Text)));
    return parser;
}

// A row of the overview: the sample of a construct, and below it its markup.
class ConstructButton : public QAbstractButton
{
public:
    explicit ConstructButton(const Construct &construct)
        : m_construct(construct)
    {
        setText(construct.markup());
        setAccessibleName(tr("Put %1 around the selection").arg(construct.markup()));
        setToolTip(tr("Put around the selection"));
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::PointingHandCursor);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_document.setDocumentMargin(0);
    }

    const Construct &construct() const { return m_construct; }
    QSize sizeHint() const override { return { 24 * Theme::unit, 6 * Theme::unit }; }

protected:
    void changeEvent(QEvent *event) override
    {
        QAbstractButton::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            update();
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (underMouse() || isDown() || hasFocus()) {
            FlatStyle::drawBox(&painter, rect(), 6,
                               hasFocus() ? QPen(palette().color(QPalette::Highlight), 2)
                                          : QPen(Qt::NoPen),
                               palette().color(QPalette::AlternateBase));
        }
        const QRectF inner = QRectF(rect()).adjusted(Theme::unit, 6, -Theme::unit, -6);
        NS::setDocumentText(m_document, parserFor(palette()).parse(m_construct.markup()));
        painter.save();
        painter.translate(isRightToLeft() ? inner.right() - m_document.idealWidth() : inner.left(),
                          inner.top());
        m_document.drawContents(&painter);
        painter.restore();

        QFont small = Theme::font(Theme::monospace);
        small.setPointSizeF(small.pointSizeF() * 0.9);
        painter.setFont(small);
        painter.setPen(palette().color(QPalette::PlaceholderText));
        // Direction marks keep the delimiters in place in a right-to-left layout.
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignBottom, u'\u2066' + text() + u'\u2069');
    }

private:
    Construct m_construct;
    QTextDocument m_document;
};

class MarkupPage : public Page
{
public:
    explicit MarkupPage(QWidget *parent)
        : Page(tr("Markup"),
               tr("Type markup and see the styled text beside it. The buttons below put the nine "
                  "constructs around the selection."),
               parent)
        , m_editor(new QPlainTextEdit)
        , m_result(new QTextEdit)
    {
        m_editor->setAccessibleName(tr("Markup"));
        m_editor->setFont(Theme::font(Theme::monospace));
        m_editor->setFrameShape(QFrame::NoFrame);
        m_editor->setTabChangesFocus(true);
        m_result->setAccessibleName(tr("Styled text"));
        m_result->setReadOnly(true);
        m_result->setTabChangesFocus(true);
        m_result->setFrameShape(QFrame::NoFrame);
        for (QTextDocument *document : { m_editor->document(), m_result->document() })
            document->setDocumentMargin(0);

        auto *const texts = new QHBoxLayout;
        texts->setSpacing(2 * Theme::unit);
        for (QWidget *widget :
             { static_cast<QWidget *>(m_editor), static_cast<QWidget *>(m_result) }) {
            QFrame *const card = makeCard(widget->accessibleName());
            card->layout()->addWidget(widget);
            texts->addWidget(card, 1);
        }
        content()->addLayout(texts, 1);
        content()->addWidget(makeCheatSheet());

        connect(m_editor, &QPlainTextEdit::textChanged, this, &MarkupPage::showResult);
        m_editor->setPlainText(tr("**Release 2.4**, //Tuesday//\n"
                                  "\n"
                                  "{#27ae60|New:} exports keep __every__ layer.\n"
                                  "{#e67e22|Changed:} ~~F9~~ `Ctrl+E` starts one.\n"
                                  "{bg#f1c40f66|Restart} to finish the update.\n"
                                  "\n"
                                  "{k3|THANK YOU} {font:Inter-SemiBold,16|Mira}"));
    }

    void showExample() override
    {
        m_editor->setFocus();
        QTextCursor cursor = m_editor->document()->find(u"layer"_s);
        m_editor->setTextCursor(cursor);
        surround({ u"**"_s, {}, u"**"_s });
    }

protected:
    void changeEvent(QEvent *event) override
    {
        Page::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            showResult();
    }

private:
    QWidget *makeCheatSheet()
    {
        const Construct constructs[] = {
            { u"**"_s, tr("bold"), u"**"_s },
            { u"//"_s, tr("italic"), u"//"_s },
            { u"`"_s, tr("monospace"), u"`"_s },
            { u"__"_s, tr("underlined"), u"__"_s },
            { u"~~"_s, tr("struck through"), u"~~"_s },
            { u"{k4|"_s, tr("spaced"), u"}"_s },
            { u"{#3498db|"_s, tr("in a colour"), u"}"_s },
            { u"{bg#1abc9c66|"_s, tr("on a colour"), u"}"_s },
            { u"{font:Inter-Bold,12|"_s, tr("in a font"), u"}"_s },
        };
        QFrame *const card = makeCard(tr("The nine constructs"));
        auto *const grid = new QGridLayout;
        grid->setSpacing(Theme::unit / 2);
        int place = 0;
        for (const Construct &construct : constructs) {
            auto *const button = new ConstructButton(construct);
            connect(button, &QAbstractButton::clicked, this, [this, button] {
                surround(button->construct());
                m_editor->setFocus();
            });
            grid->addWidget(button, place / 3, place % 3);
            ++place;
        }
        static_cast<QBoxLayout *>(card->layout())->addLayout(grid);
        return card;
    }

    // The selection stays selected. Without a selection, the sample text is inserted.
    void surround(const Construct &construct)
    {
        QTextCursor cursor = m_editor->textCursor();
        const QString text = cursor.hasSelection() ? cursor.selectedText() : construct.text;
        const qsizetype start = cursor.selectionStart() + construct.opening.size();
        cursor.insertText(construct.opening + text + construct.closing);
        cursor.setPosition(int(start));
        cursor.setPosition(int(start + text.size()), QTextCursor::KeepAnchor);
        m_editor->setTextCursor(cursor);
    }

    void showResult()
    {
        NS::setDocumentText(*m_result->document(),
                            parserFor(palette()).parse(m_editor->toPlainText()));
    }

    QPlainTextEdit *m_editor;
    QTextEdit *m_result;
};

} // namespace

Page *makeMarkupPage(QWidget *parent)
{
    return new MarkupPage(parent);
}
