// SPDX-License-Identifier: MIT
// NS::bind with the controls of Qt Widgets.
#include "Person.h"

#include <pellarvine/Platform/KeyValueCoding.h>
#include <pellarvine/Platform/KeyValueEquality.h>
#include <pellarvine/Platform/KeyValueObserving.h>
#include <pellarvine/Platform/NSChoices.h>
#include <pellarvine/Platform/NSComputedBinding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSObjectListModel.h>
#include <pellarvine/Platform/NSSegmentedControl.h>
#include <pellarvine/Platform/NSTextField.h>

#include <QAction>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDial>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QGroupBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QThread>
#include <QToolBox>
#include <QToolButton>
#include <gmock/gmock.h>

#include <climits>
#include <functional>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Holds any value; counts what is written to it.
class Cell : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)

public:
    explicit Cell(QVariant value = {})
        : m_value(std::move(value))
    { }

    QVariant value() const { return m_value; }
    void setValue(const QVariant &value)
    {
        ++writes;
        m_value = value;
        Q_EMIT valueChanged();
    }

    int writes = 0;

Q_SIGNALS:
    void valueChanged();

private:
    QVariant m_value;
};

// The model of a form. Each setter counts its calls: showing a model must not write to it.
class Customer : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString number MEMBER number NOTIFY changed)
    Q_PROPERTY(QString notes MEMBER notes NOTIFY changed)
    Q_PROPERTY(QString country MEMBER country NOTIFY changed)
    Q_PROPERTY(int vat MEMBER vat NOTIFY changed)
    Q_PROPERTY(int rank MEMBER rank NOTIFY changed)
    Q_PROPERTY(double discount MEMBER discount NOTIFY changed)
    Q_PROPERTY(double weight MEMBER weight NOTIFY changed)
    Q_PROPERTY(QDate since MEMBER since NOTIFY changed)
    Q_PROPERTY(QTime opens MEMBER opens NOTIFY changed)
    Q_PROPERTY(bool isActive MEMBER isActive NOTIFY changed)
    Q_PROPERTY(QString story MEMBER story NOTIFY changed)
    Q_PROPERTY(QDate met MEMBER met NOTIFY changed)
    Q_PROPERTY(int kind MEMBER kind NOTIFY changed)

public:
    QString number, notes, country, story;
    int vat = 0, rank = 0, kind = 0;
    double discount = 0, weight = 0;
    QDate since, met;
    QTime opens;
    bool isActive = false;

    QVariantList all() const
    {
        QVariantList values;
        for (int i = staticMetaObject.propertyOffset(); i < staticMetaObject.propertyCount(); ++i)
            values.append(staticMetaObject.property(i).read(this));
        return values;
    }

Q_SIGNALS:
    void changed();
};

// Takes a level up to 100. It reports no change if it has the level already.
class Tank : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int level READ level WRITE setLevel NOTIFY levelChanged)

public:
    int level() const { return m_level; }
    void setLevel(int level)
    {
        if (std::exchange(m_level, qMin(level, 100)) != m_level)
            Q_EMIT levelChanged();
    }

Q_SIGNALS:
    void levelChanged();

private:
    int m_level = 0;
};

class Book : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Customer *customer MEMBER customer NOTIFY customerChanged)

public:
    void select(Customer *selected)
    {
        customer = selected;
        Q_EMIT customerChanged();
    }

    Customer *customer = nullptr;

Q_SIGNALS:
    void customerChanged();
};

// A dial with a property without NOTIFY.
class Knob : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double angle READ angle WRITE setAngle USER true)

public:
    double angle() const { return m_angle; }
    void setAngle(double angle)
    {
        m_angle = angle;
        Q_EMIT turned(angle);
    }

Q_SIGNALS:
    void turned(double angle);

private:
    double m_angle = 0;
};

// Functions that make controls with the contents that their values need.

template <typename Control>
QObject *made()
{
    return new Control;
}

template <typename Button>
QObject *checkable()
{
    auto *const button = new Button;
    button->setCheckable(true);
    if constexpr (std::is_same_v<Button, QRadioButton>)
        button->setAutoExclusive(false);
    return button;
}

template <typename List>
QObject *withItems()
{
    auto *const list = new List;
    list->addItems({ u"a"_s, u"b"_s });
    return list;
}

// With two pages. A tab bar, a tab widget and a tool box have different functions to add them.
template <typename Tabs>
QObject *withPages()
{
    auto *const tabs = new Tabs;
    for (const QString &title : { u"a"_s, u"b"_s }) {
        if constexpr (std::is_same_v<Tabs, QTabBar>)
            tabs->addTab(title);
        else if constexpr (std::is_same_v<Tabs, QTabWidget>)
            tabs->addTab(new QWidget, title);
        else
            tabs->addItem(new QWidget, title);
    }
    return tabs;
}

std::string output(const std::function<void()> &action)
{
    ::testing::internal::CaptureStdout();
    try {
        action();
    } catch (const std::exception &error) {
        ADD_FAILURE() << error.what();
    }
    return ::testing::internal::GetCapturedStdout();
}

// Thirteen fields. Most of them cannot show the customer's exact value.
struct CustomerForm
{
    explicit CustomerForm(Book *book)
    {
        number.setMaxLength(5);
        vat.setRange(0, 99);
        rank.setRange(0, 10);
        discount.setDecimals(2);
        weight.setRange(0, 50);
        country.addItems({ u"France"_s, u"Norway"_s });
        kind.setSegmentCount(3);
        bind(book, &number, u"text"_s, u"number"_s);
        bind(book, &notes, u"text"_s, u"notes"_s);
        bind(book, &country, u"currentText"_s, u"country"_s);
        bind(book, &vat, u"value"_s, u"vat"_s);
        bind(book, &rank, u"value"_s, u"rank"_s);
        bind(book, &discount, u"value"_s, u"discount"_s);
        bind(book, &weight, u"value"_s, u"weight"_s);
        bind(book, &since, u"date"_s, u"since"_s);
        bind(book, &opens, u"time"_s, u"opens"_s);
        bind(book, &active, u"checked"_s, u"isActive"_s);
        bind(book, &story, u"plainText"_s, u"story"_s);
        bind(book, &met, u"selectedDate"_s, u"met"_s);
        bind(book, &kind, u"selectedSegment"_s, u"kind"_s);
    }

    static void bind(Book *book, QObject *control, const QString &property, const QString &key)
    {
        NS::bind(control, property, book, u"customer."_s + key);
    }

    QLineEdit number;
    QLineEdit notes;
    QComboBox country;
    QSpinBox vat;
    QSlider rank;
    QDoubleSpinBox discount;
    QDoubleSpinBox weight;
    QDateEdit since;
    QTimeEdit opens;
    QCheckBox active;
    QTextEdit story;
    QCalendarWidget met;
    NS::SegmentedControl kind;
};

} // namespace

TEST(ControlBinding, showing_an_object_does_not_change_it)
{
    Customer first;
    first.number = u"ABCDEFGH"_s;
    first.notes = u"a\r\nb"_s;
    first.country = u"Atlantis"_s;
    first.vat = 150;
    first.rank = 4000;
    first.discount = 99.999;
    first.weight = 1e9;
    first.since = QDate(1600, 2, 29);
    first.opens = QTime(8, 30, 15, 250);
    first.story = u"one\r\ntwo\r"_s;
    first.kind = 7;
    Customer second;
    second.country = u"Norway"_s;
    second.vat = 7;
    second.met = QDate(2020, 1, 2);
    const QVariantList firstValues = first.all();
    const QVariantList secondValues = second.all();

    Book book;
    CustomerForm form(&book);
    for (Customer *const customer :
         { &first, &second, &first, static_cast<Customer *>(nullptr), &second, &first })
        book.select(customer);
    EXPECT_EQ(first.all(), firstValues);
    EXPECT_EQ(second.all(), secondValues);
    EXPECT_EQ(form.number.text(), u"ABCDE"_s);
    EXPECT_EQ(form.vat.value(), 99);
    EXPECT_EQ(form.country.currentIndex(), -1);

    // Leaving a field is not an edit. Typing into it is an edit of that field only.
    QTest::keyClick(&form.vat, Qt::Key_Return);
    Q_EMIT form.number.editingFinished();
    EXPECT_EQ(first.all(), firstValues);
    QTest::keyClick(&form.number, Qt::Key_Backspace);
    form.vat.setValue(20);
    form.met.setSelectedDate(QDate(2021, 3, 4));
    form.story.setPlainText(u"three"_s);
    EXPECT_EQ(first.number, u"ABCD"_s);
    EXPECT_EQ(first.vat, 20);
    EXPECT_EQ(first.met, QDate(2021, 3, 4));
    EXPECT_EQ(first.story, u"three"_s);
    first.number = u"ABCDEFGH"_s;
    first.vat = 150;
    first.met = {};
    first.story = u"one\r\ntwo\r"_s;
    EXPECT_EQ(first.all(), firstValues) << "the other fields";
    EXPECT_EQ(second.all(), secondValues);
}

TEST(ControlBinding, a_value_that_its_range_cuts_off_is_shown_once_the_range_follows)
{
    Cell value(70);
    Cell maximum(50);
    QSpinBox box;
    NS::bind(&box, u"value"_s, &value, u"value"_s);
    NS::bind(&box, u"maximum"_s, &maximum, u"value"_s);
    EXPECT_EQ(box.value(), 50);
    EXPECT_EQ(value.value(), 70);
    maximum.setValue(100);
    EXPECT_EQ(box.value(), 70);
    maximum.setValue(60);
    EXPECT_EQ(value.value(), 70);
    box.setValue(10);
    maximum.setValue(90);
    EXPECT_EQ(box.value(), 10);
    EXPECT_EQ(value.value(), 10);
}

TEST(ControlBinding, every_editor_of_qt_widgets_is_bound_both_ways)
{
    const auto editableComboBox = []() -> QObject * {
        auto *const box = new QComboBox;
        box->setEditable(true);
        return box;
    };
    const auto segmented = []() -> QObject * {
        auto *const control = new NS::SegmentedControl;
        control->setSegmentCount(2);
        return control;
    };
    const struct
    {
        QObject *(*make)();
        QString property;
        QVariant value;
        QVariant edit;
    } rows[] = {
        { made<QLineEdit>, u"text"_s, u"a"_s, u"b"_s },
        { made<QPlainTextEdit>, u"plainText"_s, u"a"_s, u"b"_s },
        { made<QTextEdit>, u"plainText"_s, u"a"_s, u"b"_s },
        { made<QTextEdit>, u"markdown"_s, u"a\n\n"_s, u"b\n\n"_s },
        { made<QTextBrowser>, u"plainText"_s, u"a"_s, u"b"_s },
        { made<QSpinBox>, u"value"_s, 3, 4 },
        { made<QDoubleSpinBox>, u"value"_s, 1.5, 2.5 },
        { made<QSlider>, u"value"_s, 3, 4 },
        { made<QDial>, u"value"_s, 3, 4 },
        { made<QScrollBar>, u"value"_s, 3, 4 },
        { made<QSlider>, u"maximum"_s, 3, 4 },
        { made<QProgressBar>, u"value"_s, 3, 4 },
        { made<QCheckBox>, u"checked"_s, true, false },
        { checkable<QRadioButton>, u"checked"_s, false, true },
        { checkable<QPushButton>, u"checked"_s, true, false },
        { checkable<QToolButton>, u"checked"_s, true, false },
        { checkable<QGroupBox>, u"checked"_s, false, true },
        { checkable<QAction>, u"checked"_s, true, false },
        { made<QDockWidget>, u"windowTitle"_s, u"a"_s, u"b"_s },
        { made<QWidget>, u"windowTitle"_s, u"a"_s, u"b"_s },
        { made<QDateEdit>, u"date"_s, QDate(2020, 1, 2), QDate(2021, 3, 4) },
        { made<QTimeEdit>, u"time"_s, QTime(1, 2), QTime(3, 4) },
        { made<QDateTimeEdit>, u"dateTime"_s, QDateTime({ 2020, 1, 2 }, { 3, 4 }),
          QDateTime({ 2021, 2, 3 }, { 4, 5 }) },
        { made<QDateTimeEdit>, u"date"_s, QDate(2020, 1, 2), QDate(2021, 3, 4) },
        { made<QCalendarWidget>, u"selectedDate"_s, QDate(2020, 1, 2), QDate(2021, 3, 4) },
        { withItems<QComboBox>, u"currentText"_s, u"b"_s, u"a"_s },
        { withItems<QComboBox>, u"currentIndex"_s, 1, 0 },
        { editableComboBox, u"currentText"_s, u"a"_s, u"b"_s },
        { made<QFontComboBox>, u"currentFont"_s, QFont(u"Inter"_s), QFont(u"DejaVu Sans"_s) },
        { made<QKeySequenceEdit>, u"keySequence"_s, QKeySequence(u"Ctrl+A"_s),
          QKeySequence(u"Ctrl+B"_s) },
        { withItems<QListWidget>, u"currentRow"_s, 1, 0 },
        { withPages<QTabWidget>, u"currentIndex"_s, 1, 0 },
        { withPages<QTabBar>, u"currentIndex"_s, 1, 0 },
        { withPages<QToolBox>, u"currentIndex"_s, 1, 0 },
        { made<QDockWidget>, u"floating"_s, true, false },
        { made<QColorDialog>, u"currentColor"_s, QColor(Qt::red), QColor(Qt::blue) },
        { segmented, u"selectedSegment"_s, 1, 0 },
    };
    for (const auto &row : rows) {
        Cell cell(row.value);
        QMainWindow window; // a dock widget floats over one
        const std::unique_ptr<QObject> control(row.make());
        SCOPED_TRACE(control->metaObject()->className() + (' ' + row.property.toStdString()));
        if (auto *const dock = qobject_cast<QDockWidget *>(control.get()))
            window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        EXPECT_EQ(output([&] { NS::bind(control.get(), row.property, &cell, u"value"_s); }), "");
        EXPECT_EQ(NS::valueForKeyPath(control.get(), row.property), row.value);
        EXPECT_EQ(cell.writes, 0);
        NS::setValueForKeyPath(control.get(), row.property, row.edit);
        EXPECT_EQ(cell.value(), row.edit);
        EXPECT_GT(cell.writes, 0);
        cell.setValue(row.value);
        EXPECT_EQ(NS::valueForKeyPath(control.get(), row.property), row.value);
    }
}

TEST(ControlBinding,
     a_class_without_notify_is_bound_one_way_with_a_warning_until_its_signal_is_known)
{
    Cell cell(30.0);
    Knob knob;
    EXPECT_THAT(output([&] { NS::bind(&knob, u"angle"_s, &cell, u"value"_s); }),
                ::testing::HasSubstr("registerChangeSignal"));
    knob.setAngle(40);
    EXPECT_EQ(cell.value(), 30.0);
    EXPECT_THROW(NS::bind(&knob, u"angle"_s, &cell, u"value"_s,
                          { .direction = NS::BindingOptions::bothWays }),
                 NS::KeyValueException);
    EXPECT_EQ(output([&] {
                  NS::bind(&knob, u"angle"_s, &cell, u"value"_s,
                           { .direction = NS::BindingOptions::toControl });
              }),
              "");
    EXPECT_THROW(NS::registerChangeSignal(Knob::staticMetaObject, "angel", "turned(double)"),
                 NS::KeyValueException);
    EXPECT_THROW(NS::registerChangeSignal(Knob::staticMetaObject, "angle", "turned(int)"),
                 NS::KeyValueException);
    NS::registerChangeSignal(Knob::staticMetaObject, "angle", "turned( double )");
    NS::bind(&knob, u"angle"_s, &cell, u"value"_s);
    knob.setAngle(50);
    EXPECT_EQ(cell.value(), 50.0);
}

TEST(ControlBinding, visible_and_enabled_are_read_as_they_were_set)
{
    QWidget window;
    QWidget panel(&window);
    QLabel label(&panel);
    EXPECT_EQ(NS::valueForKeyPath(&label, u"visible"_s), true);
    window.show();
    QLabel late(&panel);
    EXPECT_FALSE(NS::valueForKeyPath(&late, u"visible"_s).isValid());
    EXPECT_FALSE(NS::valueForKeyPath(std::make_unique<QLabel>().get(), u"visible"_s).isValid());
    EXPECT_EQ(NS::valueForKeyPath(&label, u"visible"_s), true);
    panel.hide();
    panel.setEnabled(false);
    EXPECT_EQ(NS::valueForKeyPath(&label, u"visible"_s), true);
    EXPECT_EQ(NS::valueForKeyPath(&label, u"enabled"_s), true);
    EXPECT_EQ(NS::valueForKeyPath(&window, u"visible"_s), true);
    EXPECT_EQ(NS::valueForKeyPath(&panel, u"visible"_s), false);
    label.hide();
    label.setEnabled(false);
    EXPECT_EQ(NS::valueForKeyPath(&label, u"visible"_s), false);
    EXPECT_EQ(NS::valueForKeyPath(&label, u"enabled"_s), false);
}

TEST(ControlBinding, a_widget_that_joins_a_layout_later_keeps_what_its_binding_says)
{
    Cell cell(false);
    QWidget window;
    window.show();
    auto *const hidden = new QLabel;
    NS::bind(hidden, u"visible"_s, &cell, u"value"_s);
    hidden->setParent(&window);
    EXPECT_TRUE(hidden->isHidden());
    cell.setValue(true);
    EXPECT_TRUE(hidden->isVisible());
    window.setEnabled(false);
    cell.setValue(false);
    NS::bind(hidden, u"enabled"_s, &cell, u"value"_s);
    window.setEnabled(true);
    EXPECT_FALSE(hidden->isEnabled());
}

TEST(ControlBinding, a_value_that_does_not_fit_is_shown_as_well_as_can_be_with_a_warning)
{
    const std::pair<QVariant, int> rows[] = {
        { 12.5, 13 }, { 1e300, 99 }, { u"abc"_s, 0 }, { std::nan(""), 0 }
    };
    for (const auto &[value, shown] : rows) {
        Cell cell(value);
        QSlider slider;
        slider.setValue(50);
        EXPECT_THAT(output([&] { NS::bind(&slider, u"value"_s, &cell, u"value"_s); }),
                    ::testing::HasSubstr("QSlider cannot take this value"));
        EXPECT_EQ(slider.value(), shown);
        slider.setValue(7);
        EXPECT_EQ(cell.value(), 7);
        EXPECT_EQ(cell.writes, 1);
    }
}

TEST(ControlBinding, nothing_is_selected_or_edited_while_there_is_no_object)
{
    Book book;
    Customer customer;
    customer.kind = 2;
    customer.number = u"17"_s;
    NS::SegmentedControl segments;
    segments.setSegmentCount(3);
    QLineEdit field;
    QLabel label;
    QWidget window;
    Cell mayEdit(true);
    field.setPlaceholderText(u"Number"_s);
    const NS::BindingOptions options { .noSelectionPlaceholder = u"No customer"_s };
    NS::bind(&segments, u"selectedSegment"_s, &book, u"customer.kind"_s);
    NS::bind(&field, u"text"_s, &book, u"customer.number"_s, options);
    NS::bind(&label, u"text"_s, &book, u"customer.number"_s, options);
    NS::bind(&window, u"windowTitle"_s, &book, u"customer.number"_s);
    NS::bind(&field, u"enabled"_s, &mayEdit, u"value"_s);
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(segments.selectedSegment(), -1);
        EXPECT_FALSE(segments.isEnabled());
        EXPECT_EQ(field.text(), QString());
        EXPECT_FALSE(field.isEnabled());
        EXPECT_EQ(field.placeholderText(), u"No customer"_s);
        EXPECT_EQ(label.text(), u"No customer"_s);
        EXPECT_TRUE(label.isEnabled());
        EXPECT_TRUE(window.isEnabled());

        mayEdit.setValue(turn == 1);
        EXPECT_FALSE(field.isEnabled());
        book.select(&customer);
        EXPECT_EQ(segments.selectedSegment(), 2);
        EXPECT_TRUE(segments.isEnabled());
        EXPECT_EQ(field.text(), u"17"_s);
        EXPECT_EQ(field.isEnabled(), turn == 1);
        EXPECT_EQ(field.placeholderText(), u"Number"_s);
        EXPECT_EQ(label.text(), u"17"_s);
        book.select(nullptr);
    }
    NS::unbind(&field, u"text"_s);
    EXPECT_TRUE(field.isEnabled());
    EXPECT_EQ(customer.kind, 2);
}

TEST(ControlBinding, a_date_editor_without_a_date_does_not_show_the_last_one)
{
    const std::tuple<QString, QVariant, QVariant> rows[] = {
        { u"date"_s, QDate(2020, 1, 2), QDate() },
        { u"time"_s, QTime(3, 4), QTime() },
        { u"dateTime"_s, QDateTime({ 2020, 1, 2 }, { 3, 4 }), QDateTime() },
    };
    for (const auto &[property, value, none] : rows) {
        QDateTimeEdit editor;
        editor.setTime(QTime(0, 0));
        editor.setMinimumDate(QDate(1900, 1, 1));
        editor.setSpecialValueText(u"never"_s);
        if (property == u"time"_s)
            editor.setDate(editor.minimumDate());
        Cell cell(value);
        NS::bind(&editor, property, &cell, u"value"_s);
        for (const QVariant &missing : { none, QVariant() }) {
            cell.setValue(missing);
            EXPECT_EQ(editor.text(), u"never"_s) << property.toStdString();
            EXPECT_EQ(cell.value(), missing);
            cell.setValue(value);
            EXPECT_EQ(editor.property(property.toLatin1().constData()), value);
        }
        editor.setDateTime(QDateTime({ 2021, 2, 3 }, { 4, 5 }));
        EXPECT_EQ(cell.value(), editor.property(property.toLatin1().constData()));
    }
}

TEST(ControlBinding, nothing_is_selected_once_an_object_on_the_way_is_destroyed)
{
    Book book;
    auto customer = std::make_unique<Customer>();
    customer->number = u"17"_s;
    book.select(customer.get());
    QLineEdit field;
    QLabel label;
    NS::bind(&field, u"text"_s, &book, u"customer.number"_s,
             { .commit = NS::BindingOptions::whenEditingFinishes });
    NS::bind(&label, u"text"_s, { { &book, u"customer.number"_s } },
             [](const std::optional<QString> &number) { return number.value_or(u"none"_s); });
    field.setText(u"18"_s);
    // The book still has a pointer to the destroyed customer, and reports no change.
    EXPECT_EQ(output([&] { customer.reset(); }), "");
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(field.isEnabled());
    EXPECT_EQ(label.text(), u"none"_s);
    field.setText(u"19"_s);
    EXPECT_TRUE(NS::commitEditing(&field));
    Customer next;
    next.number = u"20"_s;
    book.select(&next);
    EXPECT_EQ(field.text(), u"20"_s);
    EXPECT_TRUE(field.isEnabled());
    EXPECT_EQ(label.text(), u"20"_s);
}

TEST(ControlBinding, an_edit_that_waits_reaches_the_model_once_it_is_finished)
{
    QWidget window;
    QLineEdit field(&window);
    QPlainTextEdit text(&window);
    Cell port(80);
    Cell note(u"a"_s);
    const NS::BindingOptions options { .commit = NS::BindingOptions::whenEditingFinishes };
    NS::bind(&field, u"text"_s, &port, u"value"_s, options);
    NS::bind(&text, u"plainText"_s, &note, u"value"_s, options);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, u"7000"_s);
    EXPECT_EQ(port.writes, 0);
    Q_EMIT port.valueChanged(); // another property changed; the edit stays
    EXPECT_EQ(field.text(), u"7000"_s);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(port.value().toInt(), 7000);
    EXPECT_EQ(port.writes, 1);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(port.writes, 1);
    // A control without editingFinished() commits as the focus leaves it.
    text.setFocus();
    QTest::keyClicks(&text, u"b"_s);
    EXPECT_EQ(note.writes, 0);
    field.setFocus();
    EXPECT_EQ(note.value(), u"ba"_s);
    EXPECT_EQ(note.writes, 1);
    // A button's shortcut does not move the focus. commitEditing() writes the edit.
    QTest::keyClicks(&field, u"1"_s);
    EXPECT_EQ(port.writes, 1);
    EXPECT_TRUE(NS::commitEditing(&window));
    EXPECT_EQ(port.writes, 2);
    // A change of the model wins over an edit that is not finished.
    QTest::keyClicks(&field, u"2"_s);
    port.setValue(22);
    EXPECT_EQ(field.text(), u"22"_s);
    EXPECT_TRUE(NS::commitEditing(&window));
    EXPECT_EQ(port.value(), 22);
}

TEST(ControlBinding, an_edit_of_one_object_never_reaches_the_next)
{
    Customer first;
    Customer second;
    first.number = second.number = u"1"_s;
    Book book;
    book.customer = &first;
    QLineEdit field;
    NS::bind(&field, u"text"_s, &book, u"customer.number"_s,
             { .commit = NS::BindingOptions::whenEditingFinishes });
    field.setText(u"99"_s);
    book.select(&second);
    EXPECT_EQ(field.text(), u"1"_s);
    EXPECT_TRUE(NS::commitEditing(&field));
    EXPECT_EQ(second.number, u"1"_s);
    EXPECT_EQ(first.number, u"1"_s);
}

TEST(ControlBinding, a_value_that_the_model_limits_is_shown)
{
    Tank tank;
    QSlider slider;
    slider.setRange(0, 200);
    QLineEdit field;
    NS::bind(&slider, u"value"_s, &tank, u"level"_s);
    NS::bind(&field, u"text"_s, &tank, u"level"_s);
    for (const int level : { 150, 160, 30, 100, 200 }) {
        slider.setValue(level);
        EXPECT_EQ(slider.value(), qMin(level, 100));
        EXPECT_EQ(tank.level(), qMin(level, 100));
    }
    // A text is left alone while it is typed.
    field.setText(u"101"_s);
    EXPECT_EQ(field.text(), u"101"_s);
    Q_EMIT field.editingFinished();
    EXPECT_EQ(field.text(), u"100"_s);
    EXPECT_EQ(tank.level(), 100);
}

TEST(ControlBinding, a_number_can_be_typed_key_by_key)
{
    Person person;
    QLineEdit field;
    NS::bind(&field, u"text"_s, &person, u"height"_s);
    field.clear();
    ::testing::internal::CaptureStdout(); // "" and "-" are not numbers
    QTest::keyClicks(&field, u"-1.50"_s);
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(field.text(), u"-1.50"_s);
    EXPECT_EQ(person.height, -1.5);
    Q_EMIT person.changed(); // of another property
    EXPECT_EQ(field.text(), u"-1.50"_s);
    Q_EMIT field.editingFinished();
    person.setProperty("height", 2.0);
    EXPECT_EQ(field.text(), u"2"_s);
}

TEST(ControlBinding, numbers_in_texts_are_written_as_the_control_s_locale_writes_them)
{
    Person person;
    person.setAge(1234567);
    person.height = 1.7;
    QWidget window;
    window.setLocale(QLocale(QLocale::German));
    QLineEdit height(&window);
    NS::TextField age(&window);
    QLabel label(&window);
    QLabel formatted(&window);
    QLabel computed(&window);
    NS::bind(&height, u"text"_s, &person, u"height"_s);
    NS::bind(&age, NS::NSValueBinding, &person, u"age"_s);
    NS::bind(&label, u"text"_s, &person, u"height"_s);
    NS::bind(&formatted, u"text"_s, &person, u"height"_s, { .format = u"%+.2f m"_s });
    NS::bind(&computed, u"text"_s, { { &person, u"height"_s } }, [](double m) { return m * 10; });
    const auto texts = [&] {
        return QStringList { height.text(), age.stringValue(), label.text(), formatted.text(),
                             computed.text() };
    };
    EXPECT_EQ(texts(), QStringList({ u"1,7"_s, u"1234567"_s, u"1,7"_s, u"+1,70 m"_s, u"17"_s }));
    height.setText(u"1,85"_s);
    age.setStringValue(u"1.000"_s);
    EXPECT_EQ(person.height, 1.85);
    EXPECT_EQ(person.age(), 1000);
    ::testing::internal::CaptureStdout();
    height.setText(u"1.9"_s); // the decimal point of another language
    age.setStringValue(u"1,5"_s);
    EXPECT_THAT(::testing::internal::GetCapturedStdout(), ::testing::HasSubstr("\"1.9\""));
    EXPECT_EQ(person.height, 1.85);
    EXPECT_EQ(person.age(), 1000);
    height.setText(u"1,9"_s);
    age.setStringValue(u"10"_s);
    window.setLocale(QLocale(QLocale::Arabic, QLocale::Egypt));
    EXPECT_EQ(texts(), QStringList({ u"١٫٩"_s, u"١٠"_s, u"١٫٩"_s, u"\u061c+١٫٩٠ m"_s, u"١٩"_s }));
    EXPECT_EQ(person.age(), 10);
    window.setLocale(QLocale(QLocale::English, QLocale::India));
    NS::bind(&label, u"text"_s, &person, u"age"_s, { .format = u"%'.1f"_s });
    person.setAge(1234567);
    EXPECT_EQ(label.text(), u"12,34,567.0"_s);
    // A combo box selects an entry by its text, unless its user types.
    QComboBox box;
    box.setLocale(QLocale(QLocale::German));
    box.addItems({ u"0.5"_s, u"1.9"_s });
    NS::bind(&box, u"currentText"_s, &person, u"height"_s);
    EXPECT_EQ(box.currentIndex(), 1);
    box.setEditable(true);
    NS::bind(&box, u"currentText"_s, &person, u"height"_s);
    EXPECT_EQ(box.currentText(), u"1,9"_s);
}

TEST(ControlBinding, an_edit_that_waits_means_the_same_number_in_another_locale)
{
    QLineEdit field;
    field.setLocale(QLocale(QLocale::German));
    Cell cell(1.0);
    NS::bind(&field, u"text"_s, &cell, u"value"_s,
             { .commit = NS::BindingOptions::whenEditingFinishes });
    field.setText(u"1,500"_s);
    field.setLocale(QLocale(QLocale::English));
    EXPECT_EQ(field.text(), u"1.5"_s);
    EXPECT_EQ(cell.writes, 0);
    EXPECT_TRUE(NS::commitEditing(&field));
    EXPECT_EQ(cell.value(), 1.5);
}

TEST(ControlBinding, a_number_is_read_from_its_text_in_every_locale)
{
    QLineEdit field;
    Cell cell(0.0);
    NS::bind(&field, u"text"_s, &cell, u"value"_s);
    const QVariant numbers[] = { 1.7, -1.85, -1e22, 1e300, 1e-7, -70000, LLONG_MAX, ULLONG_MAX };
    for (const QLocale &locale : QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                          QLocale::AnyTerritory)) {
        field.setLocale(locale);
        for (const QVariant &number : numbers) {
            cell.setValue(number);
            const QString text = field.text();
            field.setText(u"0"_s);
            field.setText(text);
            EXPECT_TRUE(NS::isEqual(cell.value().toDouble(), number.toDouble()))
                    << text.toStdString() << ' ' << locale.name().toStdString();
        }
    }
    field.setLocale(QLocale(QLocale::German));
    cell.setValue(0.1f);
    EXPECT_EQ(field.text(), u"0,1"_s);
    cell.setValue(ULLONG_MAX);
    field.setText(u"-1"_s); // which is that number after a conversion
    EXPECT_FALSE(NS::isEqual(cell.value(), ULLONG_MAX));
}

TEST(ControlBinding, a_transformer_that_gives_a_number_gets_one_back)
{
    Person person;
    person.height = 1.855;
    QLineEdit field;
    field.setLocale(QLocale(QLocale::German));
    NS::BindingOptions options;
    options.transformer = [](const QVariant &m) {
        return m.toDouble() * 100;
    };
    options.reverseTransformer = [](const QVariant &cm) {
        return cm == u""_s                        ? QVariant(0)
               : cm.typeId() == QMetaType::Double ? cm.toDouble() / 100
                                                  : cm;
    };
    options.onInvalid = [](const QString &) {
    };
    NS::bind(&field, u"text"_s, &person, u"height"_s, options);
    EXPECT_EQ(field.text(), u"185,5"_s);
    field.setText(u"162,5"_s);
    EXPECT_EQ(person.height, 1.625);
    field.setText(u"162.5"_s);
    EXPECT_EQ(person.height, 1.625);
    EXPECT_TRUE(field.property("invalid").toBool());
    field.clear();
    EXPECT_EQ(person.height, 0.0);
}

TEST(ControlBinding, a_refused_edit_stays_in_its_marked_control)
{
    Cell port(80);
    QLineEdit field;
    field.setAccessibleDescription(u"The server's port"_s);
    QStringList messages;
    NS::BindingOptions options;
    options.required = true;
    options.reverseTransformer = [](const QVariant &text) {
        bool isNumber = false;
        const int value = text.toInt(&isNumber);
        if (!isNumber && !text.toString().isEmpty())
            throw std::runtime_error("Digits only.");
        return isNumber ? QVariant(value) : QVariant();
    };
    options.validate = [](const QVariant &value) {
        return value.toInt() > 65535 ? u"At most 65535."_s : QString();
    };
    options.onInvalid = [&](const QString &message) {
        messages.append(message);
    };
    NS::bind(&field, u"text"_s, &port, u"value"_s, options);
    const std::pair<QString, QString> rows[] = { { u"70000"_s, u"At most 65535."_s },
                                                 { u"x"_s, u"Digits only."_s },
                                                 { u" "_s, u"Digits only."_s },
                                                 { u""_s, u"Enter a value."_s },
                                                 { u"443"_s, u""_s } };
    for (const auto &[text, message] : rows) {
        field.setText(text);
        EXPECT_EQ(field.text(), text);
        EXPECT_EQ(field.property("invalid").toBool(), !message.isEmpty());
        EXPECT_EQ(field.accessibleDescription(),
                  message.isEmpty() ? u"The server's port"_s : message);
        EXPECT_EQ(port.value(), message.isEmpty() ? 443 : 80) << qPrintable(text);
        EXPECT_EQ(NS::commitEditing(&field), message.isEmpty());
    }
    EXPECT_EQ(messages, QStringList({ u"At most 65535."_s, u"Digits only."_s, u"Enter a value."_s,
                                      QString() }));
    // The message disappears when the field shows another value.
    field.setText(u"x"_s);
    port.setValue(22);
    EXPECT_FALSE(field.property("invalid").isValid());
    EXPECT_EQ(field.text(), u"22"_s);
}

TEST(ControlBinding, a_binding_that_ends_leaves_no_mark_on_its_control)
{
    Cell first(1);
    Cell second(2);
    Person alone;
    QLineEdit field;
    field.setAccessibleDescription(u"The server's port"_s);
    field.setPlaceholderText(u"Port"_s);
    QStringList messages;
    NS::BindingOptions options;
    options.onInvalid = [&](const QString &message) {
        messages.append(message);
    };
    options.noSelectionPlaceholder = u"No server"_s;
    NS::bind(&field, u"text"_s, &first, u"value"_s, options);
    const std::function<void()> ends[] = {
        [&] { NS::bind(&field, u"text"_s, &second, u"value"_s, options); },
        [&] { NS::unbind(&field, u"text"_s); },
    };
    for (const auto &end : ends) {
        field.setText(u"x"_s);
        ASSERT_TRUE(field.property("invalid").toBool());
        end();
        EXPECT_FALSE(field.property("invalid").isValid());
        EXPECT_EQ(field.accessibleDescription(), u"The server's port"_s);
        EXPECT_EQ(messages.takeLast(), QString());
    }
    NS::bind(&field, u"text"_s, &alone, u"partner.name"_s, options);
    ASSERT_EQ(field.placeholderText(), u"No server"_s);
    NS::bind(&field, u"text"_s, &second, u"value"_s, options);
    EXPECT_EQ(field.placeholderText(), u"Port"_s);
    EXPECT_TRUE(field.isEnabled());
}

TEST(ControlBinding, a_model_that_the_program_s_functions_change_is_shown_as_it_is_then)
{
    Cell cell(1);
    QLineEdit field;
    NS::BindingOptions options;
    options.onInvalid = [&](const QString &message) {
        if (message.isEmpty())
            cell.setValue(9);
    };
    NS::bind(&field, u"text"_s, &cell, u"value"_s, options);
    field.setText(u"x"_s);
    cell.setValue(5);
    EXPECT_EQ(cell.value(), 9);
    EXPECT_EQ(field.text(), u"9"_s);
}

TEST(ControlBinding, a_missing_required_value_is_reported_on_commit)
{
    Person person;
    QWidget window;
    auto *const field = new QLineEdit(&window);
    NS::bind(field, u"text"_s, &person, u"name"_s, { .required = true });
    EXPECT_FALSE(field->property("invalid").isValid());
    EXPECT_FALSE(NS::commitEditing(&window));
    EXPECT_TRUE(field->property("invalid").toBool());
    field->setText(u"Ada"_s);
    EXPECT_TRUE(NS::commitEditing(&window));
}

TEST(ControlBinding, values_are_negated_and_transformed_on_both_ways)
{
    Cell busy(true);
    QCheckBox box;
    QPushButton button;
    NS::bind(&box, u"checked"_s, &busy, u"value"_s, { .negate = true });
    NS::bind(&button, u"enabled"_s, &busy, u"value"_s, { .negate = true });
    EXPECT_FALSE(box.isChecked());
    EXPECT_FALSE(button.isEnabled());
    box.setChecked(true);
    EXPECT_EQ(busy.value(), false);
    EXPECT_TRUE(button.isEnabled());

    Cell celsius(21.5);
    QSlider slider;
    NS::BindingOptions halves;
    halves.transformer = [](const QVariant &value) {
        return qRound(value.toDouble() * 2);
    };
    halves.reverseTransformer = [](const QVariant &value) {
        return value.toInt() / 2.0;
    };
    NS::bind(&slider, u"value"_s, &celsius, u"value"_s, halves);
    EXPECT_EQ(slider.value(), 43);
    celsius.setValue(20.1);
    EXPECT_EQ(slider.value(), 40);
    EXPECT_EQ(celsius.value(), 20.1);
    slider.setValue(41);
    EXPECT_EQ(celsius.value(), 20.5);
}

TEST(ControlBinding, a_format_is_shown_while_the_control_has_no_focus)
{
    const std::tuple<QString, QVariant, QString> rows[] = {
        { u"%.1f °C"_s, 21.25, u"21.3 °C"_s },
        { u"100%% of %05d"_s, 42, u"100% of 00042"_s },
        { u"<%s>"_s, u"ü%n"_s, u"<ü%n>"_s },
        { u"%x"_s, 255, u"ff"_s },
        { u"%.1f"_s, u"n/a"_s, u"n/a"_s },
        { u"%.1f"_s, QVariant(), QString() },
        { u"%.2s|"_s, u"äöü"_s, u"äö|"_s },
        { u"%4s|"_s, u"äö"_s, u"  äö|"_s },
        { u"%d %%"_s, qQNaN(), u"nan %"_s },
        { u"%d"_s, 1e20, u"100000000000000000000"_s },
        { u"%d"_s, ULLONG_MAX, u"18446744073709551615"_s },
        { u"%X"_s, ULLONG_MAX, u"FFFFFFFFFFFFFFFF"_s },
    };
    for (const auto &[format, value, shown] : rows) {
        Cell cell(value);
        QLabel label;
        NS::bind(&label, u"text"_s, &cell, u"value"_s, { .format = format });
        EXPECT_EQ(label.text(), shown);
    }
    Cell cell(1);
    QLabel label;
    for (const QString &format : { u"%n"_s, u"%d %d"_s, u"none"_s, u"%*d"_s, u"%999d"_s, u"%"_s })
        EXPECT_THROW(NS::bind(&label, u"text"_s, &cell, u"value"_s, { .format = format }),
                     std::invalid_argument)
                << qPrintable(format);

    Cell celsius(21.25);
    QWidget window;
    QLineEdit field(&window);
    QLineEdit other(&window);
    NS::bind(&field, u"text"_s, &celsius, u"value"_s,
             { .commit = NS::BindingOptions::whenEditingFinishes, .format = u"%.1f °C"_s });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    other.setFocus();
    EXPECT_EQ(field.text(), u"21.3 °C"_s);
    field.setFocus();
    EXPECT_EQ(field.text(), u"21.25"_s);
    field.selectAll();
    QTest::keyClicks(&field, u"18.04"_s);
    other.setFocus();
    EXPECT_EQ(field.text(), u"18.0 °C"_s);
    EXPECT_EQ(celsius.value().toDouble(), 18.04);
    EXPECT_EQ(celsius.writes, 1);
    field.setFocus();
    other.setFocus();
    EXPECT_EQ(celsius.writes, 1);
}

TEST(ControlBinding, a_number_that_is_being_typed_is_committed)
{
    QObject model;
    model.setProperty("vat", 20);
    QSpinBox box;
    box.setKeyboardTracking(false); // the box takes the text when the typing ends
    NS::bind(&box, u"value"_s, &model, u"vat"_s);
    box.show();
    box.selectAll();
    QTest::keyClicks(&box, u"19"_s);
    EXPECT_EQ(model.property("vat"), 20);
    EXPECT_TRUE(NS::commitEditing(&box));
    EXPECT_EQ(model.property("vat"), 19);
}

TEST(ControlBinding, a_control_may_be_destroyed_while_it_is_marked_or_committed)
{
    Cell cell(1);
    auto *field = new QLineEdit;
    NS::BindingOptions options;
    options.validate = [](const QVariant &) {
        return u"never"_s;
    };
    options.onInvalid = [&](const QString &) {
        delete std::exchange(field, nullptr);
    };
    NS::bind(field, u"text"_s, &cell, u"value"_s, options);
    EXPECT_FALSE(NS::commitEditing(field));
    EXPECT_FALSE(field);
    EXPECT_EQ(cell.writes, 0);
    // And by its transformer.
    field = new QLineEdit;
    options = {};
    options.transformer = [&](const QVariant &value) {
        if (value == 2)
            delete std::exchange(field, nullptr);
        return value;
    };
    options.format = u"%d"_s;
    NS::bind(field, u"text"_s, &cell, u"value"_s, options);
    cell.setValue(2);
    EXPECT_FALSE(field);
}

TEST(ControlBinding, value_stands_for_the_main_property_of_a_control)
{
    QCalendarWidget calendar;
    QAction action;
    QGroupBox group;
    QListWidget list;
    QKeySequenceEdit keys;
    QCheckBox box;
    QLineEdit field;
    QSpinBox spin;
    action.setCheckable(true);
    group.setCheckable(true);
    group.setChecked(false);
    list.addItems({ u"a"_s, u"b"_s });
    const std::tuple<QObject *, const char *, QVariant> rows[] = {
        { &calendar, "selectedDate", QDate(2024, 1, 2) },
        { &action, "checked", true },
        { &group, "checked", true },
        { &list, "currentRow", 1 },
        { &keys, "keySequence", QVariant::fromValue(QKeySequence(u"Ctrl+K"_s)) },
        { &box, "checked", true },
        { &field, "text", u"36"_s },
        { &spin, "value", 36 },
    };
    for (const auto &[control, property, value] : rows) {
        Cell cell(value);
        EXPECT_EQ(output([&cell, bound = control] {
                      NS::bind(bound, NS::NSValueBinding, &cell, u"value"_s);
                  }),
                  "");
        EXPECT_EQ(control->property(property), value) << property;
    }
}

#ifndef QT_NO_DEBUG
TEST(ControlBinding, models_of_another_thread_are_refused)
{
    Book book;
    QThread thread;
    book.moveToThread(&thread);
    QLabel label;
    QComboBox box;
    const QString key = u"customer"_s;
    const std::function<void()> binds[] = {
        [&] { NS::bind(&label, u"text"_s, &book, key); },
        [&] {
            NS::bind(&label, u"text"_s, { { &book, key } }, [](QObject *) { return 1; });
        },
        [&] { NS::bindChoices(&box, &book, key); },
        [&] { const NS::ObjectListModel model(&book, key, {}); },
    };
    for (const auto &bind : binds)
        EXPECT_DEATH(bind(), "Error: .*\"customer\".*two threads");
}
#endif

#include "ControlBindingTest.moc"
