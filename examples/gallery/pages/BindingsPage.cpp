// SPDX-License-Identifier: MIT
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/SettingsButtons.h>
#include <pellarvine/Platform/KeyValueEquality.h>
#include <pellarvine/Platform/NSComputedBinding.h>
#include <pellarvine/Platform/NSKeyValueBinding.h>
#include <pellarvine/Platform/NSListBinding.h>
#include <pellarvine/Shared/Binding.h>
#include <pellarvine/Shared/Observer.h>
#include <pellarvine/Shared/TransformableBinding.h>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <array>
#include <deque>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using Pellarvine::Binding;
using Pellarvine::Observer;
using Pellarvine::TransformableBinding;

namespace {

constexpr double coldest = 5.0;
constexpr double warmest = 30.0;

class Room : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY nameChanged)
    Q_PROPERTY(double celsius MEMBER m_celsius NOTIFY celsiusChanged)

public:
    Room(const QString &name, double celsius)
        : m_name(name)
        , m_celsius(celsius)
    { }

Q_SIGNALS:
    void nameChanged(const QString &name);
    void celsiusChanged(double celsius);

private:
    QString m_name;
    double m_celsius;
};

class House : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Room *room READ room NOTIFY roomChanged)
    Q_PROPERTY(QList<Room *> rooms READ rooms CONSTANT)

public:
    Room *room() const { return m_isEmpty ? nullptr : m_rooms[m_index].get(); }

    QList<Room *> rooms() const
    {
        QList<Room *> all;
        for (const std::unique_ptr<Room> &room : m_rooms)
            all.append(room.get());
        return all;
    }

    void showNextRoom()
    {
        m_index = (m_index + 1) % m_rooms.size();
        Q_EMIT roomChanged();
    }
    void setEmpty(bool isEmpty)
    {
        m_isEmpty = isEmpty;
        Q_EMIT roomChanged();
    }

Q_SIGNALS:
    void roomChanged();

private:
    std::array<std::unique_ptr<Room>, 3> m_rooms {
        std::make_unique<Room>(u"Living room"_s, 21.0),
        std::make_unique<Room>(u"Bedroom"_s, 17.5),
        std::make_unique<Room>(u"Workshop"_s, 12.0),
    };
    std::size_t m_index = 0;
    bool m_isEmpty = false;
};

// A field whose edit reaches the model when it is finished.
class EntryField : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QString entry READ text WRITE setText NOTIFY editingFinished)
};

// The slider and the thermostats have steps of half a degree.
double toHalves(double celsius)
{
    return qRound(qBound(coldest, celsius, warmest) * 2) / 2.0;
}

double toFahrenheit(double celsius)
{
    return qRound((celsius * 9 / 5 + 32) * 10) / 10.0;
}

double toCelsius(double fahrenheit)
{
    return toHalves((fahrenheit - 32) * 5 / 9);
}

// A row whose label is as high as the field, so that their texts are on one line.
void addRow(QFormLayout *form, const QString &label, QWidget *field)
{
    form->addRow(label, field);
    for (QWidget *const widget : { form->labelForField(field), field })
        widget->setMinimumHeight(4 * Theme::unit);
}

class BindingsPage : public Page
{
    Q_OBJECT

public:
    explicit BindingsPage(QWidget *parent)
        : Page(tr("Bindings"),
               tr("A heating panel without any connection in code. Each control is bound to the "
                  "temperature of the room by a key path, and follows when another room is shown."),
               parent)
        , m_controls(new QWidget)
        , m_slider(new QSlider(Qt::Horizontal))
        , m_fahrenheit(new QDoubleSpinBox)
        , m_celsius(new EntryField)
        , m_name(new EntryField)
        , m_advice(new QLabel)
        , m_log(new QPlainTextEdit)
        , m_bound(new QCheckBox(tr("Keep &equal")))
    {
        auto *const row = new QHBoxLayout;
        row->setSpacing(2 * Theme::unit);
        auto *const column = new QVBoxLayout;
        column->setSpacing(2 * Theme::unit);
        column->addWidget(makeSettings());
        column->addWidget(makeLog(), 1);
        auto *const rooms = new QVBoxLayout;
        rooms->setSpacing(2 * Theme::unit);
        rooms->addWidget(makePanel());
        rooms->addWidget(makeRooms(), 1);
        row->addLayout(rooms, 1);
        row->addLayout(column, 1);
        content()->addLayout(row, 1);

        observe(u"house.room.name"_s, &m_house, u"room.name"_s);
        observe(u"house.room.celsius"_s, &m_house, u"room.celsius"_s);
        observe(u"slider.value"_s, m_slider, u"value"_s);
        observe(u"spinBox.value"_s, m_fahrenheit, u"value"_s);
        observe(u"field.entry"_s, m_celsius, u"entry"_s);
        connect(m_bound, &QCheckBox::toggled, this, &BindingsPage::setBound);
        m_bound->setChecked(true);
    }

    void showExample() override
    {
        m_server.setProperty("host", u"boiler.example.org"_s);
        m_port->setText(u"70000"_s);
        NS::commitEditing(m_port);
        m_log->clear();
        m_fahrenheit->setValue(72.5);
        m_house.showNextRoom();
        m_slider->setValue(37);
    }

private:
    QWidget *makePanel()
    {
        QFrame *const card = makeCard(tr("Heating"));
        auto *const form = new QFormLayout(m_controls);
        form->setContentsMargins({});
        form->setHorizontalSpacing(2 * Theme::unit);
        form->setVerticalSpacing(Theme::unit);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        m_slider->setRange(int(coldest * 2), int(warmest * 2));
        m_fahrenheit->setRange(toFahrenheit(coldest), toFahrenheit(warmest));
        m_fahrenheit->setDecimals(1);
        m_fahrenheit->setSingleStep(0.9);
        m_fahrenheit->setSuffix(tr(" °F"));
        m_advice->setWordWrap(true);
        m_advice->setFont(Theme::font(Theme::strong));
        // Two lines high, so that the panel does not move when a message comes.
        m_advice->setMinimumHeight(2 * m_advice->fontMetrics().lineSpacing());
        m_advice->setAlignment(Qt::AlignLeading | Qt::AlignTop);
        addRow(form, tr("&Room"), m_name);
        addRow(form, tr("&Temperature"), m_slider);
        addRow(form, tr("In &Celsius"), m_celsius);
        addRow(form, tr("In &Fahrenheit"), m_fahrenheit);
        form->addRow(QString(), m_advice);
        m_slider->setAccessibleName(tr("Temperature"));

        auto *const next = new QPushButton(tr("&Next room"));
        next->setToolTip(tr("Replaces the object “room” of the path “room.celsius”"));
        connect(next, &QPushButton::clicked, &m_house, &House::showNextRoom);
        auto *const empty = new QPushButton(tr("N&o room"));
        empty->setCheckable(true);
        empty->setToolTip(tr("Sets the object “room” of the path to null"));
        connect(empty, &QPushButton::toggled, &m_house, &House::setEmpty);
        auto *const buttons = new QHBoxLayout;
        buttons->setSpacing(Theme::unit);
        buttons->addWidget(next);
        buttons->addWidget(empty);
        buttons->addStretch();

        auto *const layout = qobject_cast<QVBoxLayout *>(card->layout());
        layout->addWidget(m_controls);
        layout->addSpacing(Theme::unit);
        layout->addLayout(buttons);
        layout->addStretch();
        layout->addWidget(m_bound);
        m_bound->setToolTip(tr("Switching off destroys the bindings. Switching on makes new ones, "
                               "which show the room’s values."));
        return card;
    }

    // The same rooms as a table. An edit in the table is shown in the panel, and vice versa.
    QWidget *makeRooms()
    {
        QFrame *const card = makeCard(tr("All rooms"));
        auto *const table = new QTableView;
        NS::bind(table, &m_house, u"rooms"_s,
                 { { u"name"_s, tr("Room") }, { u"celsius"_s, tr("°C") } });
        table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
        table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
        table->verticalHeader()->hide();
        table->setFrameShape(QFrame::NoFrame);
        table->setTabKeyNavigation(false);
        table->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
        table->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
        table->setAccessibleName(tr("All rooms"));
        card->layout()->addWidget(table);
        return card;
    }

    // Settings, with a field that is validated and an address that is computed from two settings.
    QWidget *makeSettings()
    {
        QFrame *const card = makeCard(tr("Thermostat server"));
        auto *const host = new QLineEdit;
        m_port = new QLineEdit;
        auto *const address = new QLabel;
        auto *const message = new QLabel;
        message->setWordWrap(true);
        message->setForegroundRole(QPalette::BrightText);
        message->setMinimumHeight(message->fontMetrics().lineSpacing());
        address->setTextInteractionFlags(Qt::TextSelectableByMouse);

        NS::bind(host, u"text"_s, &m_server, u"host"_s, { .required = true, .popover = true });
        NS::BindingOptions number { .commit = NS::BindingOptions::whenEditingFinishes,
                                    .required = true };
        number.onInvalid = [message](const QString &text) {
            message->setText(text);
        };
        number.validate = [](const QVariant &value) {
            bool isNumber = false;
            const int entered = value.toString().toInt(&isNumber);
            return isNumber && entered > 0 && entered < 65536
                           ? QString()
                           : tr("The port is a number from 1 to 65535.");
        };
        NS::bind(m_port, u"text"_s, &m_server, u"port"_s, number);
        NS::bind(address, u"text"_s, { { &m_server, u"host"_s }, { &m_server, u"port"_s } },
                 [](const QString &server, int entered) {
                     return u"https://%1:%2/"_s.arg(server).arg(entered);
                 });

        auto *const form = new QFormLayout;
        form->setHorizontalSpacing(2 * Theme::unit);
        form->setVerticalSpacing(Theme::unit);
        form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        addRow(form, tr("&Host"), host);
        addRow(form, tr("&Port"), m_port);
        form->addRow(tr("Address"), address);
        form->addRow(QString(), message);
        auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Apply | QDialogButtonBox::Reset
                                                   | QDialogButtonBox::RestoreDefaults);
        Pellarvine::connectButtons(&m_server, buttons);
        auto *const layout = qobject_cast<QVBoxLayout *>(card->layout());
        layout->addLayout(form);
        layout->addWidget(buttons);
        return card;
    }

    QWidget *makeLog()
    {
        QFrame *const card = makeCard(tr("Changes as they come"));
        m_log->setReadOnly(true);
        m_log->setFont(Theme::font(Theme::monospace));
        m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
        m_log->setMaximumBlockCount(500);
        m_log->setFrameShape(QFrame::NoFrame);
        m_log->setTabChangesFocus(true);
        m_log->setAccessibleName(tr("Changes as they come"));
        m_log->setLayoutDirection(Qt::LeftToRight);
        auto *const clear = new QPushButton(tr("C&lear"));
        connect(clear, &QPushButton::clicked, m_log, &QPlainTextEdit::clear);
        card->layout()->addWidget(m_log);
        card->layout()->addWidget(clear);
        card->layout()->setAlignment(clear, Qt::AlignTrailing);
        return card;
    }

    void observe(const QString &name, QObject *object, const QString &keyPath)
    {
        m_observers.emplace_back(object, keyPath, false, [this, name](const QVariant &value) {
            const QString text = NS::isNullObject(value) ? u"null"_s : value.toString();
            m_log->appendPlainText(u"%1  %2"_s.arg(name, -18).arg(text));
        });
    }

    void setBound(bool isBound)
    {
        m_sliderBinding.reset();
        m_fahrenheitBinding.reset();
        m_celsiusBinding.reset();
        m_nameBinding.reset();
        m_adviceBinding.reset();
        m_enabledBinding.reset();
        if (!isBound)
            return;
        const QString temperature = u"room.celsius"_s;
        m_nameBinding.emplace(&m_house, u"room.name"_s, m_name, u"entry"_s);
        m_sliderBinding.emplace(
                &m_house, temperature, m_slider, u"value"_s, true,
                [](double celsius) { return qRound(celsius * 2); },
                [](int halves) { return halves / 2.0; });
        m_fahrenheitBinding.emplace(&m_house, temperature, m_fahrenheit, u"value"_s, true,
                                    toFahrenheit, toCelsius);
        m_celsiusBinding.emplace(
                &m_house, temperature, m_celsius, u"entry"_s, true,
                [this](double celsius) {
                    return tr("%1 °C").arg(locale().toString(celsius, 'f', 1));
                },
                [this](const QString &text) { return enteredCelsius(text); });
        m_adviceBinding.emplace(&m_house, temperature, m_advice, u"text"_s, false, advice);
        m_enabledBinding.emplace(&m_house, u"room"_s, m_controls, u"enabled"_s, false,
                                 [](const QVariant &room) { return room.isValid(); });
    }

    // The number that was typed. The present temperature if it is not a number.
    double enteredCelsius(const QString &text) const
    {
        bool isNumber = false;
        const double celsius = locale().toDouble(text.section(u'°', 0, 0).trimmed(), &isNumber);
        return isNumber ? toHalves(celsius) : m_slider->value() / 2.0;
    }

    static QVariant advice(const QVariant &celsius)
    {
        if (!celsius.isValid())
            return tr("No room to heat.");
        if (celsius.toDouble() < 16)
            return tr("Frost protection: the boiler rests for most of the day.");
        if (celsius.toDouble() < 20)
            return tr("Cool: good for sleeping, and for the bill.");
        if (celsius.toDouble() < 23)
            return tr("Comfortable: what most people choose for living rooms.");
        return tr("Warm: each further degree takes six per cent more gas.");
    }

    House m_house;
    QTemporaryDir m_folder; // the settings are deleted with it
    Pellarvine::Settings m_server { std::make_unique<QSettings>(m_folder.filePath(u"gallery.ini"_s),
                                                                QSettings::IniFormat),
                                    u"server"_s,
                                    { { u"host"_s, u"heating.local"_s }, { u"port"_s, 8443 } } };
    QWidget *m_controls;
    QSlider *m_slider;
    QDoubleSpinBox *m_fahrenheit;
    EntryField *m_celsius;
    EntryField *m_name;
    QLabel *m_advice;
    QPlainTextEdit *m_log;
    QLineEdit *m_port = nullptr;
    QCheckBox *m_bound;

    std::deque<Observer> m_observers;
    std::optional<Binding> m_nameBinding;
    std::optional<TransformableBinding<double, int>> m_sliderBinding;
    std::optional<TransformableBinding<double, double>> m_fahrenheitBinding;
    std::optional<TransformableBinding<double, QString>> m_celsiusBinding;
    std::optional<Binding> m_adviceBinding;
    std::optional<Binding> m_enabledBinding;
};

} // namespace

Page *makeBindingsPage(QWidget *parent)
{
    return new BindingsPage(parent);
}

#include "BindingsPage.moc"
