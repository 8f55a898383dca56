// SPDX-License-Identifier: MIT
#include "Ostrevane/TicketDialog.h"

#include "Ostrevane/App.h"
#include "Ostrevane/SystemDetails.h"
#include "Window/NSTitleBar.h"
#include "Window/WindowFrame.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace Pellarvine {

namespace {

// Whether the ticket may have reached the tracker although the transfer failed.
bool isUncertain(NS::URLError::Code code)
{
    switch (code) {
    case NS::URLError::unknown:
    case NS::URLError::cancelled:
    case NS::URLError::timedOut:
    case NS::URLError::networkConnectionLost:
    case NS::URLError::httpTooManyRedirects:
    case NS::URLError::badServerResponse:
        return true;
    default:
        return false;
    }
}

QPlainTextEdit *makeEditor(int lines)
{
    auto *const editor = new QPlainTextEdit;
    editor->setTabChangesFocus(true);
    editor->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    const int margins = editor->frameWidth() * 2 + int(editor->document()->documentMargin()) * 2;
    editor->setMinimumHeight(editor->fontMetrics().lineSpacing() * lines + margins);
    return editor;
}

QLabel *makeText()
{
    auto *const label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

struct TicketDialog::Private
{
    Sender sender;
    bool isSending = false;
    QLineEdit *summary = new QLineEdit;
    QPlainTextEdit *description = makeEditor(4);
    QCheckBox *facts = new QCheckBox(tr("&Include facts about the program and this computer"));
    QPlainTextEdit *preview = makeEditor(5);
    QLabel *remark = makeText();
    QProgressBar *progress = new QProgressBar;
    QLabel *outcome = makeText();
    QPushButton *send = nullptr;
    QPushButton *close = nullptr;

    void layOut(TicketDialog *dialog)
    {
        auto *const layout = new QVBoxLayout(dialog);
        const auto add = [&](const QString &title, QWidget *field, int stretch) {
            auto *const label = new QLabel(title);
            label->setBuddy(field);
            layout->addWidget(label);
            layout->addWidget(field, stretch);
        };
        add(tr("S&ummary:"), summary, 0);
        add(tr("&Description:"), description, 2);
        layout->addWidget(facts);
        add(tr("&What is sent:"), preview, 3);
        layout->addWidget(remark);
        layout->addWidget(progress);
        layout->addWidget(outcome);
        auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
        close = buttons->button(QDialogButtonBox::Close);
        close->setAutoDefault(false);
        send = buttons->addButton(tr("&Send"), QDialogButtonBox::ActionRole);
        send->setDefault(true);
        layout->addWidget(buttons);
        QWidget::setTabOrder(send, close);
        connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
        connect(send, &QPushButton::clicked, dialog, &TicketDialog::send);
    }

    bool isSendable() const { return !isSending && !summary->text().trimmed().isEmpty(); }

    // Called after every change of what would be sent.
    void showContent(const QString &sentDescription)
    {
        const QString text = summary->text() + "\n\n"_L1 + sentDescription;
        preview->setPlainText(summary->text().isEmpty() ? sentDescription : text);
        remark->setVisible(!facts->isChecked());
        send->setEnabled(isSendable());
        send->setText(tr("&Send"));
        showOutcome({});
    }

    void showSending()
    {
        summary->setReadOnly(isSending);
        description->setReadOnly(isSending);
        facts->setEnabled(!isSending);
        progress->setVisible(isSending);
        send->setEnabled(isSendable());
    }

    void showOutcome(const QString &text) const
    {
        outcome->setText(text);
        outcome->setVisible(!text.isEmpty());
        if (text.isEmpty())
            return;
        QAccessibleEvent event(outcome, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
};

TicketDialog::TicketDialog(Sender sender, QWidget *parent)
    : QDialog(parent)
    , d(std::make_unique<Private>())
{
    d->sender = std::move(sender);
    setWindowTitle(tr("Report a Problem"));
    d->layOut(this);
    d->summary->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    d->summary->setPlaceholderText(tr("What went wrong, in one line"));
    d->description->setPlaceholderText(tr("What you did, what you expected and what you saw"));
    d->facts->setChecked(true);
    d->preview->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    d->remark->setText(tr("The program’s name and version are always sent."));
    d->progress->setRange(0, 0); // shows activity; the progress is not known
    d->progress->setAccessibleName(tr("Sending"));
    d->outcome->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    d->outcome->setFocusPolicy(Qt::StrongFocus); // the flags alone do not make it a Tab stop

    const auto showContent = [this] {
        d->showContent(sentDescription());
    };
    connect(d->summary, &QLineEdit::textChanged, this, showContent);
    connect(d->summary, &QLineEdit::textChanged, this, &TicketDialog::summaryChanged);
    connect(d->description, &QPlainTextEdit::textChanged, this, [this, showContent] {
        showContent();
        Q_EMIT descriptionChanged(description());
    });
    connect(d->facts, &QCheckBox::toggled, this, showContent);
    connect(d->facts, &QCheckBox::toggled, this, &TicketDialog::includesFactsChanged);
    for (const int key : { Qt::Key_Return, Qt::Key_Enter }) {
        // Return without Ctrl inserts a line into the description.
        auto *const shortcut = new QShortcut(QKeySequence(int(Qt::CTRL) | key), this);
        connect(shortcut, &QShortcut::activated, this, &TicketDialog::send);
    }
    showContent();
    d->showSending();
    resize(sizeHint()
           + QSize(fontMetrics().averageCharWidth() * 24, fontMetrics().lineSpacing() * 6));
}

TicketDialog::~TicketDialog() = default;

QAction *TicketDialog::makeAction(QWidget *window, Sender sender)
{
    auto *const action = new QAction(tr("&Report a Problem…"), window);
    connect(action, &QAction::triggered, window,
            [window, sender = std::move(sender), dialog = QPointer<TicketDialog>()]() mutable {
                if (!dialog) {
                    dialog = new TicketDialog(sender, window);
                    const auto *const frame = detail::WindowFrame::of(window->window());
                    if (frame && !frame->isNative())
                        NS::TitleBar::install(dialog);
                }
                dialog->show();
                dialog->raise();
                dialog->activateWindow();
            });
    return action;
}

QString TicketDialog::summary() const
{
    return d->summary->text();
}

void TicketDialog::setSummary(const QString &summary)
{
    d->summary->setText(summary);
}

QString TicketDialog::description() const
{
    return d->description->toPlainText();
}

void TicketDialog::setDescription(const QString &description)
{
    if (description != this->description())
        d->description->setPlainText(description);
}

bool TicketDialog::includesFacts() const
{
    return d->facts->isChecked();
}

void TicketDialog::setIncludesFacts(bool includesFacts)
{
    d->facts->setChecked(includesFacts);
}

bool TicketDialog::isSending() const
{
    return d->isSending;
}

QString TicketDialog::facts()
{
    return (QStringList(u"%1 %2"_s.arg(App::name(), App::version())) + detail::systemDetails())
            .join(u'\n');
}

QString TicketDialog::sentDescription() const
{
    QString text = description();
    if (!includesFacts())
        return text;
    if (!text.isEmpty())
        text += "\n\n"_L1;
    return text + facts();
}

void TicketDialog::send()
{
    if (!d->isSendable())
        return;
    d->isSending = true;
    d->showSending();
    d->showOutcome(tr("Sending…"));
    d->close->setFocus(); // the other button is disabled
    Q_EMIT sendingChanged(true);
    d->sender(summary(), sentDescription(),
              [dialog = QPointer(this)](const std::optional<NS::URLError> &error) {
                  QCoreApplication *const application = QCoreApplication::instance();
                  if (!application)
                      return;
                  // Only the main thread can see whether the dialog still exists.
                  const auto finish = [dialog, error] {
                      if (dialog)
                          dialog->finish(error);
                  };
                  QMetaObject::invokeMethod(application, finish, Qt::QueuedConnection);
              });
}

void TicketDialog::finish(const std::optional<NS::URLError> &error)
{
    d->isSending = false;
    if (error) {
        d->showSending();
        const QString outcome =
                isUncertain(error->code)
                        ? tr("The report may not have arrived. %1 If you send it again, the report "
                             "may arrive twice.")
                        : tr("The report was not sent. %1");
        d->showOutcome(outcome.arg(error->localizedDescription));
        d->send->setText(tr("&Send Again"));
        d->send->setFocus();
    } else {
        d->summary->clear();
        d->description->clear();
        d->showSending();
        d->showOutcome(tr("The report was sent. Thank you."));
        d->close->setFocus();
    }
    Q_EMIT sendingChanged(false);
    if (error)
        Q_EMIT failed(error->localizedDescription);
    else
        Q_EMIT sent();
}

} // namespace Pellarvine
