// SPDX-License-Identifier: MIT
#include "Pellarvine/PassphraseDialog.h"

#include "Base/Assign.h"
#include "Shared/PassphraseWords.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace Pellarvine {

namespace {

// Estimates below `weakBelow` bits fall to one machine in days, since the container's key
// derivation costs an attacker 14 bits more; six words of the list have 77.
constexpr int weakBelow = 50;
constexpr int strongFrom = 70;

// Empties the field and overwrites the memory of its text, unless the text is also someone else's:
// a literal in read-only memory, or a text of the program that was set. clear() would copy the
// text.
void wipe(QLineEdit *field)
{
    QString text = field->text();
    field->setText(QString());
    if (text.isDetached())
        std::fill(text.begin(), text.end(), QChar(u'0'));
}

QLabel *makeText()
{
    auto *const label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->hide();
    return label;
}

void announce(QLabel *label)
{
    QAccessibleEvent event(label, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace

struct PassphraseDialog::Private
{
    Purpose purpose = Purpose::unlock;
    QString error;
    QString accepted;
    QLabel *explanation = makeText();
    QLineEdit *passphrase = new QLineEdit;
    QLineEdit *repetition = nullptr; // only to create
    QProgressBar *strength = nullptr;
    QLabel *strengthText = nullptr;
    QCheckBox *shown = new QCheckBox(tr("&Show the passphrase"));
    QLabel *note = makeText(); // the error, else what is missing
    QLabel *capsLock = makeText();
    QPushButton *accept = nullptr;

    bool creates() const { return purpose == Purpose::create; }

    QList<QLineEdit *> fields() const
    {
        return creates() ? QList<QLineEdit *> { passphrase, repetition }
                         : QList<QLineEdit *> { passphrase };
    }

    bool isComplete() const
    {
        return !passphrase->text().isEmpty()
               && (!creates() || repetition->text() == passphrase->text());
    }

    void showNote()
    {
        QString text = error;
        if (text.isEmpty() && creates() && !repetition->text().isEmpty() && !isComplete()
            && !passphrase->text().startsWith(repetition->text()))
            text = tr("The two passphrases differ.");
        if (text == note->text())
            return;
        note->setText(text);
        note->setVisible(!text.isEmpty());
        if (!text.isEmpty())
            announce(note);
    }

    void showStrength()
    {
        const int bits = int(estimatedPassphraseEntropy(passphrase->text()));
        strength->setValue(std::min(bits, strength->maximum()));
        QString text;
        if (bits > 0)
            text = bits < weakBelow ? tr("Weak") : bits < strongFrom ? tr("Fair") : tr("Strong");
        strengthText->setText(text);
        strength->setAccessibleDescription(text);
    }

    void update()
    {
        accept->setEnabled(isComplete());
        if (strength)
            showStrength();
        showNote();
    }

    // Qt does not tell the state of Caps Lock; the case of a typed letter shows it.
    void watchCapsLock(const QKeyEvent &event) const
    {
        if (event.key() == Qt::Key_CapsLock) {
            capsLock->hide();
            return;
        }
        const QString text = event.text();
        if (text.size() != 1 || !text[0].isLetter() || text[0].toLower() == text[0].toUpper())
            return;
        const bool isOn = text[0].isUpper() != event.modifiers().testFlag(Qt::ShiftModifier);
        if (isOn == !capsLock->isHidden())
            return;
        capsLock->setVisible(isOn);
        if (isOn)
            announce(capsLock);
    }
};

PassphraseDialog::PassphraseDialog(Purpose purpose, QWidget *parent)
    : QDialog(parent)
    , d(new Private)
{
    d->purpose = purpose;
    setWindowTitle(d->creates() ? tr("New Passphrase") : tr("Passphrase"));
    auto *const form = new QFormLayout(this);
    form->addRow(d->explanation);
    form->addRow(tr("&Passphrase:"), d->passphrase);
    if (d->creates()) {
        d->strength = new QProgressBar;
        d->strength->setMaximum(strongFrom + 10);
        d->strength->setAccessibleName(tr("Estimated strength"));
        d->strength->setTextVisible(false);
        d->strengthText = new QLabel;
        // A change of the word does not change the bar.
        for (const QString &word : { tr("Weak"), tr("Fair"), tr("Strong") })
            d->strengthText->setMinimumWidth(std::max(d->strengthText->minimumWidth(),
                                                      fontMetrics().horizontalAdvance(word)));
        auto *const row = new QHBoxLayout;
        row->addWidget(d->strength, 1);
        row->addWidget(d->strengthText);
        form->addRow(tr("Strength:"), row);
        d->repetition = new QLineEdit;
        form->addRow(tr("Once &more:"), d->repetition);
    }
    form->addRow(QString(), d->shown);
    form->addRow(d->note);
    d->capsLock->setText(tr("Caps Lock is on."));
    form->addRow(d->capsLock);

    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    d->accept = buttons->button(QDialogButtonBox::Ok);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    if (d->creates()) {
        auto *const suggest = buttons->addButton(tr("Ma&ke One Up"), QDialogButtonBox::ActionRole);
        suggest->setToolTip(tr("Six random words"));
        suggest->setAutoDefault(false);
        connect(suggest, &QPushButton::clicked, this, [this] {
            const QString generated = generatedPassphrase(); // its memory becomes the fields'
            for (QLineEdit *const field : d->fields()) {
                wipe(field);
                field->setText(generated);
            }
            d->shown->setChecked(true); // to be written down
            d->passphrase->setFocus();
        });
    }
    connect(d->shown, &QCheckBox::toggled, this, [this](bool isShown) {
        for (QLineEdit *const field : d->fields())
            field->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    });
    for (QLineEdit *const field : d->fields()) {
        field->setEchoMode(QLineEdit::Password);
        field->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this, [this] { d->update(); });
        connect(field, &QLineEdit::textEdited, this, [this] { setError({}); });
    }
    d->update();
}

PassphraseDialog::~PassphraseDialog()
{
    for (QLineEdit *const field : d->fields()) {
        field->disconnect(this);
        wipe(field);
    }
    if (d->accepted.isDetached())
        std::fill(d->accepted.begin(), d->accepted.end(), QChar(u'0'));
}

PassphraseDialog::Purpose PassphraseDialog::purpose() const
{
    return d->purpose;
}

QString PassphraseDialog::explanation() const
{
    return d->explanation->text();
}

void PassphraseDialog::setExplanation(const QString &explanation)
{
    if (explanation == d->explanation->text())
        return;
    d->explanation->setText(explanation);
    d->explanation->setVisible(!explanation.isEmpty());
    Q_EMIT explanationChanged(explanation);
}

QString PassphraseDialog::error() const
{
    return d->error;
}

void PassphraseDialog::setError(const QString &error)
{
    if (!detail::assign(d->error, error))
        return;
    d->showNote();
    Q_EMIT errorChanged(error);
}

QString PassphraseDialog::takePassphrase()
{
    return std::exchange(d->accepted, {});
}

void PassphraseDialog::done(int result)
{
    if (result == Accepted) {
        if (!d->isComplete())
            return;
        d->accepted = d->passphrase->text(); // shared, so that wipe() leaves it
    }
    for (QLineEdit *const field : d->fields())
        wipe(field);
    d->shown->setChecked(false);
    QDialog::done(result);
}

bool PassphraseDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        d->watchCapsLock(*static_cast<QKeyEvent *>(event));
    return QDialog::eventFilter(watched, event);
}

void PassphraseDialog::showEvent(QShowEvent *event)
{
    d->passphrase->setFocus();
    QDialog::showEvent(event);
}

} // namespace Pellarvine
