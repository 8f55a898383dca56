// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Ostrevane/CodebaseTicket.h>

#include <QDialog>

#include <functional>
#include <memory>
#include <utility>

QT_FORWARD_DECLARE_CLASS(QAction)

namespace Pellarvine {

/// Lets the user write a bug report, shows exactly what is sent, sends it, and says what became of
/// it:
///
///     helpMenu->addAction(Pellarvine::TicketDialog::makeAction(window));
///
/// A report that could not be sent stays in the dialog and can be sent again. The facts about the
/// program and the machine go with it unless the user leaves them out; the request itself names the
/// program and its version in any case. Esc closes the dialog, a transfer continues, and the
/// outcome is shown when the dialog is shown again.
///
/// Programs link the components Widgets and Network. Interface files can name the class once the
/// program has called `NS::registerClass<Pellarvine::TicketDialog>()`. Main thread only.
class PELLARVINE_EXPORT TicketDialog : public QDialog
{
    Q_OBJECT
    Q_PROPERTY(QString summary READ summary WRITE setSummary NOTIFY summaryChanged)
    Q_PROPERTY(QString description READ description WRITE setDescription NOTIFY descriptionChanged)
    Q_PROPERTY(bool includesFacts READ includesFacts WRITE setIncludesFacts NOTIFY
                       includesFactsChanged)
    Q_PROPERTY(bool sending READ isSending NOTIFY sendingChanged)

public:
    /// Sends a ticket, as `CodebaseTicket::submit` does, and calls back once from any thread. The
    /// dialog may be gone by then.
    using Sender = std::function<void(const QString &summary, const QString &description,
                                      CodebaseTicket::Callback callback)>;

    /// `parent` may be null.
    explicit TicketDialog(QWidget *parent)
        : TicketDialog(&TicketDialog::post, parent)
    { }
    /// Sends by other means, for example to a tracker of another kind.
    explicit TicketDialog(Sender sender, QWidget *parent = nullptr);
    ~TicketDialog() override;

    /// An action "Report a Problem…", owned by `window`. It opens one dialog above the window,
    /// which keeps a report that has not been sent.
    static QAction *makeAction(QWidget *window, Sender sender = &TicketDialog::post);

    /// The title, one line. Default: empty.
    QString summary() const;
    void setSummary(const QString &summary);

    /// What the user has typed, without the facts.
    QString description() const;
    void setDescription(const QString &description);

    /// Default: true.
    bool includesFacts() const;
    void setIncludesFacts(bool includesFacts);

    /// Whether a report is on its way. Default: false.
    bool isSending() const;

    /// Name and version of the program, Qt, operating system and machine, a line each.
    static QString facts();

    /// The description that send() sends: what the user has typed, and the facts if included.
    QString sentDescription() const;

public Q_SLOTS:
    /// Does nothing without a summary, and while a ticket is being sent.
    void send();

Q_SIGNALS:
    void summaryChanged(const QString &summary);
    void descriptionChanged(const QString &description);
    void includesFactsChanged(bool includesFacts);
    void sendingChanged(bool isSending);
    /// The transfer succeeded; the fields are empty again.
    void sent();
    /// `reason` is a sentence for people. The fields keep their texts.
    void failed(const QString &reason);

private:
    // Compiled by programs, so that the component Widgets needs no network. For the same reason
    // there is no default constructor: moc would call it.
    static void post(const QString &summary, const QString &description,
                     CodebaseTicket::Callback callback)
    {
        CodebaseTicket(summary, description).submit(std::move(callback));
    }
    void finish(const std::optional<NS::URLError> &error);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
