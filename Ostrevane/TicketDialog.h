// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Ostrevane/CodebaseTicket.h>

#include <QDialog>

#include <functional>
#include <memory>
#include <utility>

QT_FORWARD_DECLARE_CLASS(QAction)

namespace Pellarvine {

/// A dialog for bug reports. It shows the exact text that it sends, and the result:
///
///     helpMenu->addAction(Pellarvine::TicketDialog::makeAction(window));
///
/// A report that could not be sent stays in the dialog and can be sent again. It includes facts
/// about the program and the machine unless the user clears the check box; the HTTP request always
/// names the program and its version. Esc closes the dialog while a transfer continues; the dialog
/// shows the result when it is opened again.
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
    /// Sends a ticket as `CodebaseTicket::submit` does, and calls back once, from any thread. The
    /// dialog may be deleted by then.
    using Sender = std::function<void(const QString &summary, const QString &description,
                                      CodebaseTicket::Callback callback)>;

    /// `parent` may be null.
    explicit TicketDialog(QWidget *parent)
        : TicketDialog(&TicketDialog::post, parent)
    { }
    /// Sends with `sender`, for example to a tracker of another kind.
    explicit TicketDialog(Sender sender, QWidget *parent = nullptr);
    ~TicketDialog() override;

    /// An action "Report a Problem…", owned by `window`. It opens a dialog above the window. The
    /// dialog keeps a report that has not been sent, and has an NS::TitleBar if the window has one.
    static QAction *makeAction(QWidget *window, Sender sender = &TicketDialog::post);

    /// The title, one line. Default: empty.
    QString summary() const;
    void setSummary(const QString &summary);

    /// The text that the user has typed, without the facts. Default: empty.
    QString description() const;
    void setDescription(const QString &description);

    /// Whether the facts are sent. Default: true.
    bool includesFacts() const;
    void setIncludesFacts(bool includesFacts);

    /// Whether a report is being sent. Default: false.
    bool isSending() const;

    /// Name and version of the program, Qt, operating system and machine, one per line.
    static QString facts();

    /// The description that send() sends: the typed text, and the facts if they are included.
    QString sentDescription() const;

public Q_SLOTS:
    /// Sends the report. Does nothing without a summary, and while a report is being sent.
    void send();

Q_SIGNALS:
    void summaryChanged(const QString &summary);
    void descriptionChanged(const QString &description);
    void includesFactsChanged(bool includesFacts);
    void sendingChanged(bool isSending);
    /// The report was sent; the fields are empty.
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
