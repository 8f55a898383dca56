// SPDX-License-Identifier: MIT
// The dialog of "Report a Problem…" in a Help menu. The page has a
// tracker of its own, and shows the request that the tracker received.
#include "../LoopbackTracker.h"
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Ostrevane/TicketDialog.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Pellarvine::CodebaseTicket;
using Pellarvine::TicketDialog;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TicketsPage", text);
}

// The headers for display, with the account's key masked.
QString masked(const QByteArray &headers)
{
    static const QRegularExpression credentials(u"^(authorization: *basic ).*$"_s,
                                                QRegularExpression::CaseInsensitiveOption
                                                        | QRegularExpression::MultilineOption);
    return QString::fromUtf8(headers).remove(u'\r').replace(credentials,
                                                            u"\\1%1"_s.arg(QString(12, u'•')));
}

// The dialog as a part of the page. Esc must not close it.
class EmbeddedDialog : public TicketDialog
{
public:
    EmbeddedDialog()
        : TicketDialog(nullptr)
    {
        setWindowFlags(Qt::Widget);
        layout()->setContentsMargins({});
    }
    void done(int) override { }

protected:
    void showEvent(QShowEvent *event) override
    {
        TicketDialog::showEvent(event);
        findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Close)->hide();
    }
};

class TicketsPage : public Page
{
public:
    explicit TicketsPage(QWidget *parent);

    void showExample() override;

private:
    void showRequest(const QByteArray &headers, const QByteArray &body);

    LoopbackTracker *m_tracker;
    TicketDialog *m_dialog;
    QComboBox *m_answer;
    QPlainTextEdit *m_request;
};

TicketsPage::TicketsPage(QWidget *parent)
    : Page(::tr("Bug tickets"),
           ::tr("The dialog of “Report a Problem…” shows what it sends, and keeps a report that "
                "could not be sent."),
           parent)
    , m_tracker(new LoopbackTracker(u"api.tracker.example"_s, this))
    , m_dialog(new EmbeddedDialog)
    , m_answer(new QComboBox)
    , m_request(new QPlainTextEdit)
{
    m_answer->addItem(::tr("accepts it (201)"), u"201 Created"_s);
    m_answer->addItem(::tr("rejects the key (401)"), u"401 Unauthorized"_s);
    m_answer->addItem(::tr("is out of order (500)"), u"500 Internal Server Error"_s);
    m_answer->addItem(::tr("closes the connection"), QString());
    m_request->setReadOnly(true);
    m_request->setFont(Theme::font(Theme::monospace));
    m_request->setFrameShape(QFrame::NoFrame);
    m_request->document()->setDocumentMargin(0);
    m_request->setPlaceholderText(::tr("Nothing yet"));
    m_request->setAccessibleName(::tr("What the tracker received"));
    m_request->setTabChangesFocus(true);
    // The lines of a request are left to right in every language.
    m_request->setLayoutDirection(Qt::LeftToRight);

    QFrame *const report = makeCard(::tr("Report a problem"));
    report->layout()->addWidget(m_dialog);
    QFrame *const received = makeCard(::tr("What the tracker received"));
    auto *const answer = new QHBoxLayout;
    auto *const label = new QLabel(::tr("The &tracker"));
    label->setBuddy(m_answer);
    answer->addWidget(label);
    answer->addWidget(m_answer, 1);
    static_cast<QVBoxLayout *>(received->layout())->addLayout(answer);
    received->layout()->addWidget(m_request);
    auto *const columns = new QHBoxLayout;
    columns->setSpacing(2 * Theme::unit);
    columns->addWidget(report, 3);
    columns->addWidget(received, 2);
    content()->addLayout(columns, 1);

    connect(m_answer, &QComboBox::currentIndexChanged, this,
            [this] { m_tracker->setAnswer(m_answer->currentData().toString().toLatin1()); });
    connect(m_tracker, &LoopbackTracker::received, this, &TicketsPage::showRequest);
    CodebaseTicket::setTracker(u"https://api.tracker.example/"_s, u"gallery"_s);
    if (!m_tracker->start())
        m_request->setPlainText(::tr("The page’s tracker could not be started."));
}

void TicketsPage::showExample()
{
    m_dialog->setSummary(::tr("Export as PDF loses the last page"));
    m_dialog->setDescription(
            ::tr("1. Open “Minutes <draft> & notes”\n2. Choose File > Export as PDF\n\n"
                 "Expected: all 12 pages. Seen: 11, without a message."));
    m_answer->setCurrentIndex(m_answer->count() - 1);
    QEventLoop loop;
    connect(m_dialog, &TicketDialog::sendingChanged, &loop, [&loop](bool isSending) {
        if (!isSending)
            loop.quit();
    });
    m_dialog->send();
    loop.exec();
}

void TicketsPage::showRequest(const QByteArray &headers, const QByteArray &body)
{
    m_request->setPlainText(masked(headers) + u"\n\n"_s + QString::fromUtf8(body));
}

} // namespace

Page *makeTicketsPage(QWidget *parent)
{
    return new TicketsPage(parent);
}
