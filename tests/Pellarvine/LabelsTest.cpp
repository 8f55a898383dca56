// SPDX-License-Identifier: MIT
#include <pellarvine/Pellarvine/HeightForWidthTextField.h>
#include <pellarvine/Pellarvine/MarkupLabel.h>
#include <pellarvine/Pellarvine/PopoverMessage.h>
#include <pellarvine/Platform/NSColor.h>
#include <pellarvine/Platform/NSFont.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSParagraphStyle.h>
#include <pellarvine/Platform/NSPopover.h>
#include <pellarvine/Platform/NSView.h>
#include <pellarvine/Shared/Font.h>
#include <pellarvine/Shared/MarkupParser.h>
#include <pellarvine/Shared/Parser.h>

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Pellarvine;

namespace {

const QString sentence = u"The quick brown fox jumps over the lazy dog, then it rests."_s;

QFont fontAt(const MarkupLabel &label, qsizetype place)
{
    return label.attributedStringValue().attribute(NS::FontAttributeName, place).value<QFont>();
}

QColor colorAt(const MarkupLabel &label, qsizetype place)
{
    return label.attributedStringValue()
            .attribute(NS::ForegroundColorAttributeName, place)
            .value<NS::Color>()
            .toQColor();
}

Qt::Alignment alignmentOf(const MarkupLabel &label)
{
    return label.attributedStringValue()
            .attribute(NS::ParagraphStyleAttributeName, 0)
            .value<NS::ParagraphStyle>()
            .alignment;
}

// The text fields of all messages on the screen, the latest last.
QList<NS::TextField *> messages()
{
    QList<NS::TextField *> fields;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (!window->isVisible() || !window->inherits("Pellarvine::detail::PopoverBubble"))
            continue;
        fields += window->findChildren<NS::TextField *>();
    }
    return fields;
}

void settle()
{
    QApplication::processEvents();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The texts of these fields.
QStringList shownTexts()
{
    QStringList texts;
    const QList<NS::TextField *> fields = messages();
    for (const NS::TextField *const field : fields)
        texts.append(field->stringValue());
    return texts;
}

class Form
{
public:
    Form()
    {
        window.setGeometry(50, 120, 300, 200); // room for a message above, at any scale
        name.setGeometry(40, 60, 200, 30);
        save.setGeometry(20, 150, 100, 30);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    // Sends the click to the window, as the window system does.
    void click(QWidget *widget)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(&window, widget->rect().center()));
        settle();
    }

    QWidget window;
    QLineEdit name { &window };
    QPushButton save { u"Save"_s, &window };
};

} // namespace

TEST(HeightForWidthTextField, takes_over_its_width_in_the_next_layout_pass)
{
    HeightForWidthTextField field;
    field.setStringValue(sentence);
    NS::setFrame(&field, QRectF(0, 0, 200, 40));
    NS::layoutSubtreeIfNeeded(&field);
    EXPECT_EQ(field.preferredMaxLayoutWidth(), 200);
    const int before = field.sizeHint().height();
    NS::setFrame(&field, QRectF(0, 0, 120, 40));
    NS::layoutSubtreeIfNeeded(&field);
    EXPECT_EQ(field.preferredMaxLayoutWidth(), 120);
    EXPECT_GT(field.sizeHint().height(), before);
    EXPECT_EQ(field.sizeHint().height(), field.heightForWidth(120));
    EXPECT_FALSE(NS::needsLayout(&field));
    NS::setFrame(&field, QRectF(0, 0, 120, 40));
    EXPECT_TRUE(NS::needsLayout(&field)) << "though the frame is the same";
}

TEST(HeightForWidthTextField, on_the_screen_a_new_frame_asks_for_the_pass)
{
    HeightForWidthTextField field;
    field.setStringValue(sentence);
    field.resize(200, 40);
    field.show();
    settle();
    EXPECT_EQ(field.preferredMaxLayoutWidth(), 200);
    field.resize(150, 40);
    EXPECT_TRUE(NS::needsLayout(&field));
    EXPECT_EQ(field.preferredMaxLayoutWidth(), 200);
    settle();
    EXPECT_EQ(field.preferredMaxLayoutWidth(), 150);
}

TEST(HeightForWidthTextField, gets_wider_again_with_its_window)
{
    QWidget window;
    auto *const row = new QHBoxLayout(&window);
    auto *const plain = new HeightForWidthTextField;
    plain->setStringValue(sentence);
    auto *const rich = new MarkupLabel;
    rich->setMarkupStringValue(u"**The** "_s + sentence);
    auto *const column = new QVBoxLayout;
    for (HeightForWidthTextField *const field :
         { plain, static_cast<HeightForWidthTextField *>(rich) })
        column->addWidget(field, 0, Qt::AlignLeft);
    row->addLayout(column);
    row->addStretch();
    window.resize(900, 300);
    window.show();
    settle();
    const int wide[] = { plain->width(), rich->width() };
    const int line = plain->heightForWidth(wide[0]);
    for (const int narrow : { 150, 400, 120 }) {
        window.resize(narrow, 300);
        settle();
        EXPECT_LE(plain->width(), narrow);
        EXPECT_EQ(plain->heightForWidth(plain->width()) > line, plain->width() < wide[0]);
        window.resize(900, 300);
        settle();
        EXPECT_EQ(plain->width(), wide[0]) << narrow;
        EXPECT_EQ(rich->width(), wide[1]) << narrow;
    }
}

TEST(MarkupLabel, styles_markup_by_its_own_font_alignment_and_colour)
{
    MarkupLabel label;
    label.setFont(NS::systemFont(13));
    label.setAlignment(Qt::AlignHCenter);
    label.setTextColor(Qt::red);
    label.setMarkupStringValue(u"**Hi** {#0000ff|there}"_s);
    EXPECT_EQ(label.markupStringValue(), u"Hi there"_s);
    EXPECT_EQ(label.stringValue(), u"Hi there"_s);
    EXPECT_EQ(fontAt(label, 0), Pellarvine::heavier(NS::systemFont(13)));
    EXPECT_EQ(fontAt(label, 2), NS::systemFont(13));
    EXPECT_EQ(colorAt(label, 0), QColor(Qt::red));
    EXPECT_EQ(colorAt(label, 4), QColor(Qt::blue));
    EXPECT_EQ(alignmentOf(label), Qt::AlignHCenter);

    // A change of colour, font or alignment applies to the next markup.
    const NS::AttributedString first = label.attributedStringValue();
    label.setTextColor(Qt::green);
    label.setFont(NS::systemFont(20));
    label.setAlignment(Qt::AlignRight);
    EXPECT_EQ(label.attributedStringValue(), first);
    label.setMarkupStringValue(u"**Hi**"_s);
    EXPECT_EQ(colorAt(label, 0), QColor(Qt::green));
    EXPECT_EQ(fontAt(label, 0), Pellarvine::heavier(NS::systemFont(20)));
}

TEST(MarkupLabel, markup_follows_the_labels_format_where_it_names_none)
{
    const QString markup = u"a**b**`c`{font:Inter-SemiBold|d}{font:Inter-SemiBold,30|e}{#f00|f}"_s;
    QWidget window;
    window.setFont(NS::systemFont(20));
    MarkupLabel label;
    const auto checkFonts = [&label](double size) {
        EXPECT_EQ(fontAt(label, 0), NS::systemFont(size));
        EXPECT_EQ(fontAt(label, 1), Pellarvine::heavier(NS::systemFont(size)));
        EXPECT_EQ(fontAt(label, 2).pointSizeF(), size);
        EXPECT_EQ(fontAt(label, 3), NS::fontWithName(u"Inter-SemiBold"_s, size));
        EXPECT_EQ(fontAt(label, 4), NS::fontWithName(u"Inter-SemiBold"_s, 30));
    };
    label.setMarkupStringValue(markup);
    label.setMarkup(markup); // the same text, which now follows the font
    label.setParent(&window);
    checkFonts(20);
    label.setMarkup(u"%1"_s + markup.sliced(1), { u"a"_s });
    window.setFont(NS::systemFont(31));
    checkFonts(31);
    label.setTextColor(Qt::green);
    label.setAlignment(Qt::AlignRight);
    EXPECT_EQ(colorAt(label, 0), QColor(Qt::green));
    EXPECT_EQ(colorAt(label, 5), QColor(Qt::red));
    EXPECT_EQ(alignmentOf(label), Qt::AlignRight);
    EXPECT_EQ(label.markup(), u"%1"_s + markup.sliced(1));
    // A text of the program's own stays as it is.
    const NS::AttributedString own(u"own"_s, { { NS::FontAttributeName, NS::systemFont(9) } });
    label.setAttributedStringValue(own);
    label.setFont(NS::systemFont(12));
    EXPECT_EQ(label.attributedStringValue(), own);
    label.setParent(nullptr);
}

TEST(MarkupLabel, every_write_asks_for_layout_even_of_nothing)
{
    MarkupLabel label;
    for (const QString &markup : { u"**Hi**"_s, u"**Hi**"_s, QString(), QString() }) {
        NS::setNeedsLayout(&label, false);
        label.setMarkupStringValue(markup);
        EXPECT_TRUE(NS::needsLayout(&label));
    }
    EXPECT_EQ(label.stringValue(), QString());
}

TEST(MarkupLabel, awakes_with_the_markup_that_was_typed_in_its_file)
{
    MarkupLabel label;
    label.setStringValue(u"//Draft//"_s);
    EXPECT_EQ(label.stringValue(), u"//Draft//"_s);
    EXPECT_TRUE(QMetaObject::invokeMethod(&label, "awakeFromNib"));
    EXPECT_EQ(label.stringValue(), u"Draft"_s);
    EXPECT_TRUE(fontAt(label, 0).italic());
    const QMetaObject *const meta = label.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty("markupStringValue"));
    EXPECT_FALSE(property.isStored());
    EXPECT_FALSE(property.isDesignable());
    EXPECT_STREQ(meta->userProperty().name(), "markup");
}

TEST(MarkupLabel, keeps_its_markup_while_it_shows_it)
{
    MarkupLabel label;
    const QSignalSpy changes(&label, &MarkupLabel::markupChanged);
    EXPECT_TRUE(label.setProperty("markup", u"**Hi**"_s));
    EXPECT_EQ(label.markup(), u"**Hi**"_s);
    EXPECT_EQ(label.stringValue(), u"Hi"_s);
    label.setMarkup(u"**Hi**"_s);
    EXPECT_EQ(changes.size(), 1);
    label.setMarkupStringValue(u"//Ho//"_s);
    EXPECT_EQ(label.markup(), u"//Ho//"_s);
    EXPECT_EQ(changes.size(), 2);
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::darkGreen);
    label.setPalette(palette);
    EXPECT_EQ(label.markup(), u"//Ho//"_s);
    // awakeFromNib() applies the font that an interface file has set.
    label.setFont(NS::systemFont(20));
    label.awakeFromNib();
    EXPECT_EQ(label.markup(), u"//Ho//"_s);
    EXPECT_EQ(fontAt(label, 0), Pellarvine::italicVariant(NS::systemFont(20)));
    label.setStringValue(u"**As it is**"_s);
    EXPECT_EQ(label.markup(), QString());
    EXPECT_EQ(changes.size(), 3);
}

TEST(MarkupLabel, a_slot_may_set_other_markup_or_delete_the_label)
{
    QPointer<MarkupLabel> label = new MarkupLabel;
    QString reported;
    QObject::connect(label, &MarkupLabel::markupChanged,
                     [&](const QString &markup) { reported = markup; });
    QObject::connect(label, &MarkupLabel::stringValueChanged, [&](const QString &text) {
        if (text == u"first")
            label->setMarkup(u"//second//"_s);
        else if (text == u"last")
            delete label;
    });
    label->setMarkup(u"**first**"_s);
    EXPECT_EQ(label->stringValue(), u"second"_s);
    EXPECT_EQ(label->markup(), u"//second//"_s);
    EXPECT_EQ(reported, u"//second//"_s);
    label->setMarkup(u"**last**"_s);
    EXPECT_FALSE(label);
}

TEST(MarkupLabel, shows_arguments_as_they_are_also_with_another_palette)
{
    MarkupLabel label;
    label.setMarkup(u"**%1** moved"_s, { u"a**b**"_s });
    EXPECT_EQ(label.stringValue(), u"a**b** moved"_s);
    EXPECT_EQ(label.markup(), u"**%1** moved"_s);
    label.setMarkup(u"**%1** moved"_s, { u"{#f00|c}"_s });
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::darkGreen);
    label.setPalette(palette);
    EXPECT_EQ(label.stringValue(), u"{#f00|c} moved"_s);
    EXPECT_EQ(colorAt(label, 3), QColor(Qt::darkGreen));
    label.awakeFromNib();
    EXPECT_EQ(label.stringValue(), u"{#f00|c} moved"_s);
    label.setMarkupStringValue(u"%1"_s);
    EXPECT_EQ(label.stringValue(), u"%1"_s);

    Form form;
    PopoverMessage::showMarkupMessage(u"**%1** moved"_s, { u"//x//"_s }, &form.name);
    EXPECT_EQ(shownTexts(), QStringList { u"//x// moved"_s });
}

TEST(MarkupLabel, links_that_a_rule_makes_are_clicked_reached_by_tab_and_named)
{
    class LinkRule : public Pellarvine::Parser
    {
    public:
        QString regex() const override { return u"(\\[)(.+?)(\\]\\()(.+?)(\\))"_s; }
        int principalCaptureGroup() const override { return 1; }
        NS::Attributes provideAttributes(const QStringList &captures,
                                         const Pellarvine::MarkupParser &) const override
        {
            return { { NS::LinkAttributeName, QUrl(captures.at(3)) } };
        }
    };
    QWidget window;
    QLineEdit before(&window);
    MarkupLabel label(&window);
    label.setGeometry(0, 40, 300, 40);
    label.setOpensLinks(false);
    label.setParsers(QList(label.parsers()) << std::make_shared<LinkRule>());
    label.setMarkup(u"[**The** notes](notes:1) or [the plan](notes:2)"_s);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    before.setFocus();

    QSignalSpy followed(&label, &NS::TextField::linkActivated);
    const auto lastFollowed = [&] {
        return followed.takeLast().constFirst().toUrl().toString();
    };
    auto *const accessible = QAccessible::queryAccessibleInterface(&label);
    const int first = accessible->childCount() - 2;
    ASSERT_GE(first, 0);
    const QString names[] = { u"The notes"_s, u"the plan"_s };
    for (int i = 0; i < 2; ++i) {
        QAccessibleInterface *const link = accessible->child(first + i);
        ASSERT_EQ(link->role(), QAccessible::Link);
        EXPECT_EQ(link->text(QAccessible::Name), names[i]);
        EXPECT_EQ(accessible->indexOfChild(link), first + i);
        const QString url = u"notes:%1"_s.arg(i + 1);

        before.setFocus();
        for (int tabs = 0; tabs <= i; ++tabs)
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(link->state().focused) << i;
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(lastFollowed(), url);

        const QPoint middle = window.mapFromGlobal(link->rect().center());
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, middle);
        EXPECT_EQ(lastFollowed(), url);
        link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(lastFollowed(), url);
    }
    // Backtab goes from the last link to the first, and then to the previous field.
    before.setFocus();
    QTest::keyClick(&before, Qt::Key_Backtab);
    EXPECT_TRUE(accessible->child(first + 1)->state().focused);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(window.focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(before.hasFocus());
}

TEST(MarkupLabel, a_new_palette_recolours_only_text_in_the_palettes_colour)
{
    const auto paletteOf = [](QRgb color) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, QColor(color));
        return palette;
    };
    const QColor light(0xfff0f0f0);
    MarkupLabel label;
    label.setPalette(paletteOf(0xff000000));
    label.setMarkupStringValue(u"Text in {#000|ink}, **bold** and {#c0392b|red}"_s);
    label.setPalette(paletteOf(light.rgb()));
    EXPECT_EQ(colorAt(label, 0), light);
    EXPECT_EQ(colorAt(label, 8), QColor(Qt::black)); // ink
    EXPECT_EQ(colorAt(label, 13), light); // bold
    EXPECT_EQ(colorAt(label, 22), QColor(0xc0, 0x39, 0x2b));

    // A text that the program sets does not follow the palette.
    const NS::AttributedString own(u"own"_s, { { NS::ForegroundColorAttributeName,
                                                 QVariant::fromValue(NS::Color(light)) } });
    label.setAttributedStringValue(own);
    label.setPalette(paletteOf(0xff000000));
    EXPECT_EQ(label.attributedStringValue(), own);

    // The text colour applies to the next text. From then on the palette applies to none.
    label.setMarkupStringValue(u"Text"_s);
    EXPECT_EQ(colorAt(label, 0), QColor(Qt::black));
    label.setTextColor(Qt::red);
    label.setPalette(paletteOf(light.rgb()));
    EXPECT_EQ(colorAt(label, 0), QColor(Qt::black));
}

TEST(PopoverMessage, wraps_at_250_units_and_keeps_10_free_around)
{
    Form form;
    for (const QString &text : { u"Saved"_s, sentence + u' ' + sentence }) {
        PopoverMessage::showMessage(text, &form.name);
        ASSERT_EQ(messages().size(), 1);
        NS::TextField *const field = messages().constFirst();
        QWidget *const container = field->parentWidget();
        EXPECT_EQ(field->stringValue(), text);
        EXPECT_EQ(field->attributedStringValue(), NS::AttributedString(text));
        EXPECT_EQ(field->height(), field->heightForWidth(250));
        EXPECT_EQ(NS::frame(field), QRectF(10, 10, 250, field->height()));
        EXPECT_EQ(container->size(), QSize(270, field->height() + 20));
        EXPECT_EQ(field->preferredMaxLayoutWidth(), 250);
        EXPECT_FALSE(field->isSelectable() || field->isEditable() || field->isBezeled()
                     || field->drawsBackground());
        // The arrow points to the middle of the view's upper edge.
        const QPoint anchor = form.name.mapToGlobal(QPoint(100, 0));
        EXPECT_EQ(container->mapToGlobal(QPoint(135, container->height())), anchor - QPoint(0, 10));
        settle();
        QTest::keyClick(&form.name, Qt::Key_Shift);
        EXPECT_EQ(messages().size(), 1);
        QTest::keyClick(&form.name, Qt::Key_A);
        settle();
        EXPECT_EQ(messages().size(), 0);
    }
    EXPECT_EQ(form.name.text(), u"aa"_s);
}

TEST(PopoverMessage, tells_why_a_binding_refuses_an_edit)
{
    Form form;
    QLineEdit second(&form.window);
    second.setGeometry(140, 150, 100, 30);
    second.show();
    QObject model;
    model.setProperty("port", 80);
    model.setProperty("host", u"a"_s);
    NS::BindingOptions options { .commit = NS::BindingOptions::whenEditingFinishes,
                                 .required = true,
                                 .popover = true };
    NS::BindingOptions digits = options;
    digits.validate = [](const QVariant &value) {
        return value.toInt() > 0 ? QString() : u"Digits only."_s;
    };
    NS::bind(&form.name, u"text"_s, &model, u"port"_s, digits);
    NS::bind(&second, u"text"_s, &model, u"host"_s, options);
    form.name.setFocus();
    form.name.setText(u"many"_s);
    for (int attempt = 0; attempt < 2; ++attempt) { // also a second time
        QTest::keyClick(&form.name, Qt::Key_Return);
        settle();
        EXPECT_EQ(shownTexts(), QStringList { u"Digits only."_s });
        form.window.activateWindow(); // on a desktop, it stays active beside the bubble
        ASSERT_TRUE(QTest::qWaitFor([&form] { return form.name.hasFocus(); }));
    }
    QTest::keyClick(&form.name, Qt::Key_Backspace);
    settle();
    EXPECT_EQ(shownTexts(), QStringList());

    // A new value of the model takes the place of the edit, and of its message.
    QTest::keyClick(&form.name, Qt::Key_Return);
    settle();
    EXPECT_EQ(shownTexts(), QStringList { u"Digits only."_s });
    model.setProperty("port", 8080);
    settle();
    EXPECT_EQ(shownTexts(), QStringList());
    EXPECT_EQ(form.name.text(), u"8080"_s);
    form.name.setText(u"many"_s);

    // Both fields are marked as invalid. The first one shows its message.
    second.clear();
    EXPECT_FALSE(NS::commitEditing(&form.window));
    EXPECT_EQ(shownTexts(), QStringList { u"Digits only."_s });
    EXPECT_TRUE(second.property("invalid").toBool());
    settle();
    form.click(&form.name);
    form.name.setText(u"443"_s);
    EXPECT_FALSE(NS::commitEditing(&form.window));
    settle();
    EXPECT_EQ(shownTexts(), QStringList { u"Enter a value."_s });
    EXPECT_EQ(model.property("port"), 443);
    form.click(&form.name);
    EXPECT_EQ(shownTexts(), QStringList());

    // Without the option, no bubble is shown.
    options.popover = false;
    options.onInvalid = [](const QString &) {
    };
    NS::bind(&second, u"text"_s, &model, u"host"_s, options);
    second.clear();
    EXPECT_FALSE(NS::commitEditing(&second));
    EXPECT_EQ(shownTexts(), QStringList());
}

TEST(PopoverMessage, shows_markup_in_the_default_fonts_and_attributed_text_as_it_is)
{
    Form form;
    PopoverMessage::showMarkupMessage(u"**Saved** to disk"_s, &form.save);
    ASSERT_EQ(messages().size(), 1);
    EXPECT_EQ(messages().constFirst()->attributedStringValue(),
              Pellarvine::MarkupParser().parse(u"**Saved** to disk"_s));
    // A second message is shown beside the first. The next click closes both.
    const NS::AttributedString text(u"Plain"_s, { { NS::KernAttributeName, 2.0 } });
    PopoverMessage::showAttributedMessage(text, &form.name);
    settle();
    ASSERT_EQ(messages().size(), 2);
    EXPECT_TRUE(messages().at(0)->attributedStringValue() == text
                || messages().at(1)->attributedStringValue() == text);
    const QSignalSpy clicks(&form.save, &QPushButton::clicked);
    QTest::mouseClick(form.window.windowHandle(), Qt::LeftButton, {}, { 60, 165 });
    settle();
    EXPECT_EQ(messages().size(), 0);
    EXPECT_EQ(clicks.size(), 1);
}

TEST(PopoverMessage, a_long_word_wraps_anywhere)
{
    Form form;
    const QString address = u"https://example.org/"_s + QString(200, u'x');
    for (const bool isMarkup : { false, true }) {
        isMarkup ? PopoverMessage::showMarkupMessage(u"**See** "_s + address, &form.name)
                 : PopoverMessage::showMessage(address, &form.name);
        settle();
        const NS::TextField *const field = messages().constFirst();
        const QFontMetrics metrics(field->font());
        EXPECT_GT(field->height(), metrics.horizontalAdvance(address) / 250 * metrics.height());
        EXPECT_EQ(field->width(), 250);
    }
}

TEST(PopoverMessage, one_that_is_taller_than_the_screen_scrolls)
{
    Form form;
    form.name.setFocus();
    const QRect screen = form.window.screen()->availableGeometry();
    PopoverMessage::showMessage((sentence + u' ').repeated(100), &form.name);
    settle();
    ASSERT_EQ(messages().size(), 1);
    NS::TextField *const field = messages().constFirst();
    const QWidget *const bubble = field->window();
    EXPECT_TRUE(screen.contains(bubble->geometry()));
    EXPECT_EQ(NS::frame(field), QRectF(10, 10, 250, field->heightForWidth(250)));
    EXPECT_GT(field->height(), screen.height());
    EXPECT_FALSE(field->visibleRegion().contains(field->rect().bottomLeft()));
    // Keys scroll the message, and do not close it.
    ASSERT_TRUE(bubble->focusWidget());
    for (int i = 0; i < 50; ++i)
        QTest::keyClick(bubble->focusWidget(), Qt::Key_PageDown);
    EXPECT_TRUE(field->visibleRegion().contains(field->rect().bottomLeft()));
    QTest::keyClick(bubble->focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(messages().size(), 0);
    EXPECT_EQ(form.window.focusWidget(), &form.name);
}

TEST(PopoverMessage, markup_has_the_ink_of_the_bubble_and_not_of_the_view)
{
    Form form;
    form.save.setStyleSheet(u"background: blue; color: white"_s);
    PopoverMessage::showMarkupMessage(u"**Saved** in {#c0392b|red}"_s, &form.save);
    settle();
    const NS::TextField *const field = messages().constFirst();
    const auto colorAt = [field](qsizetype place) {
        return field->attributedStringValue()
                .attribute(NS::ForegroundColorAttributeName, place)
                .value<QColor>();
    };
    const auto darkest = [field] {
        const QRect place(field->mapTo(field->window(), QPoint()), field->size());
        const QImage picture = field->window()->grab(place).toImage();
        int least = 255;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                least = std::min(least, qGray(picture.pixel(x, y)));
        }
        return least;
    };
    EXPECT_EQ(colorAt(0), QColor(Qt::black));
    EXPECT_LT(darkest(), 60);

    // It follows the palette while it is open.
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, QColor(240, 240, 240));
    form.window.setPalette(dark);
    EXPECT_EQ(colorAt(0), QColor(240, 240, 240));
    EXPECT_EQ(colorAt(9), QColor(0xc0, 0x39, 0x2b));
    form.window.setPalette(QPalette());
    EXPECT_EQ(colorAt(0), QColor(Qt::black));

    // With a style sheet, changes of the palette do not reach the text.
    const QString sheet = u"QWidget { color: white } #dark { background: navy }"_s;
    form.window.setObjectName(u"dark"_s);
    qApp->setStyleSheet(sheet);
    settle();
    EXPECT_EQ(colorAt(0), QColor(Qt::white));
    qApp->setStyleSheet({});
    settle();
    EXPECT_EQ(colorAt(0), QColor(Qt::black));
}

TEST(PopoverMessage, every_click_and_every_key_that_reports_shows_its_message)
{
    Form form;
    int count = 0;
    QObject::connect(&form.save, &QPushButton::clicked, &form.window, [&] {
        PopoverMessage::showMessage(u"Message %1"_s.arg(++count), &form.save);
    });
    for (const QString &text : { u"Message 1"_s, u"Message 2"_s, u"Message 3"_s }) {
        form.click(&form.save);
        EXPECT_EQ(shownTexts(), QStringList { text });
    }
    form.save.setFocus();
    for (const QString &text : { u"Message 4"_s, u"Message 5"_s }) {
        QTest::keyClick(&form.save, Qt::Key_Space);
        settle();
        EXPECT_EQ(shownTexts(), QStringList { text });
    }
}

TEST(PopoverMessage, buttons_that_report_at_the_box_around_them_are_all_heard)
{
    Form form;
    form.window.hide();
    QWidget box(&form.window);
    box.setGeometry(10, 40, 280, 150);
    QPushButton copy(u"Copy"_s, &box);
    copy.setGeometry(10, 10, 80, 30);
    QPushButton remove(u"Delete"_s, &box);
    remove.setGeometry(10, 60, 80, 30);
    form.window.show();
    for (QPushButton *const button : { &copy, &remove }) {
        QObject::connect(button, &QPushButton::clicked, &box, [&box, button] {
            PopoverMessage::showMessage(button->text() + u" failed"_s, &box);
        });
    }
    form.click(&copy);
    EXPECT_EQ(shownTexts(), QStringList { u"Copy failed"_s });
    form.click(&remove);
    EXPECT_EQ(shownTexts(), QStringList { u"Delete failed"_s });
}

TEST(PopoverMessage, takes_the_place_of_the_one_at_the_same_view_once_it_is_painted)
{
    Form form;
    PopoverMessage::showMessage(u"Looking…"_s, &form.name);
    settle();
    const QPointer<NS::TextField> first = messages().constFirst();
    const QPoint place = first->mapToGlobal(QPoint());
    PopoverMessage::showMessage(u"Found"_s, &form.name);
    EXPECT_EQ(messages().size(), 2); // the new message is shown before the old one closes
    settle();
    EXPECT_FALSE(first);
    ASSERT_EQ(shownTexts(), QStringList { u"Found"_s });
    EXPECT_EQ(messages().constFirst()->mapToGlobal(QPoint()), place);
}

TEST(PopoverMessage, is_read_out_and_leaves_nothing_behind)
{
    Form form;
    PopoverMessage::showMessage(sentence, &form.name);
    QWidget *const bubble = messages().constFirst()->parentWidget()->parentWidget();
    QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(bubble);
    EXPECT_EQ(accessible->role(), QAccessible::Notification);
    EXPECT_EQ(accessible->text(QAccessible::Name), sentence);
    const QPointer<NS::TextField> field = messages().constFirst();
    const QPointer<QWidget> kept = bubble;
    form.window.close();
    settle();
    EXPECT_FALSE(field || kept);
    const qsizetype before = QApplication::allWidgets().size();
    PopoverMessage::showMessage(sentence, &form.name); // the field is hidden now
    settle();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}
