// SPDX-License-Identifier: MIT
// Seals a file under a passphrase and opens it again, on a worker thread.
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Pellarvine/PassphraseDialog.h>
#include <pellarvine/Shared/CryptorError.h>
#include <pellarvine/Shared/Sealing.h>
#include <pellarvine/Shared/TransferError.h>

#include <QAccessible>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QFutureWatcher>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtConcurrentRun>

#include <stop_token>

using namespace Qt::StringLiterals;
using Pellarvine::PassphraseDialog;

namespace {

constexpr int progressSteps = 1000;
const QString sealedSuffix = u".sealed"_s;

enum class Direction {
    seal,
    open,
};

struct Job
{
    Direction direction;
    QString source;
    QString target;
    QString passphrase;
    std::stop_token stop;
};

struct Outcome
{
    bool isGood = false;
    QString text;
};

QString tr(const char *text)
{
    return QCoreApplication::translate("ContainerPage", text);
}

// The target file appears after all of it was written; an opened file, after it was verified.
Outcome transfer(QPromise<Outcome> &promise, const Job &job)
{
    QFile source(job.source);
    if (!source.open(QIODevice::ReadOnly))
        return { false, tr("Cannot read %1: %2").arg(job.source, source.errorString()) };
    QSaveFile target(job.target);
    if (!target.open(QIODevice::WriteOnly))
        return { false, tr("Cannot write %1: %2").arg(job.target, target.errorString()) };
    const Pellarvine::Transfer transfer {
        .progress =
                [&promise](qint64 done, qint64 total) {
                    promise.setProgressValue(int(progressSteps * done / std::max(done, total)));
                },
        .stop = job.stop,
    };
    try {
        if (job.direction == Direction::seal)
            Pellarvine::seal(source, target, job.passphrase, transfer);
        else
            Pellarvine::open(source, target, job.passphrase, transfer);
    } catch (const Pellarvine::CryptorError &error) {
        return { false, tr("%1 Nothing was written.").arg(error.localizedDescription()) };
    } catch (const Pellarvine::TransferError &error) {
        return { false, tr("%1 Nothing was written.").arg(error.localizedDescription()) };
    }
    if (!target.commit())
        return { false, tr("Cannot write %1: %2").arg(job.target, target.errorString()) };
    const QString name = QFileInfo(job.target).fileName();
    return {
        true,
        job.direction == Direction::seal
                ? tr("Sealed. The result is “%1”, beside the original.").arg(name)
                : tr("Opened and verified. The result is “%1”, beside the sealed file.").arg(name)
    };
}

void run(QPromise<Outcome> &promise, const Job &job)
{
    promise.setProgressRange(0, progressSteps);
    promise.addResult(transfer(promise, job));
}

bool isSealed(const QString &path)
{
    QFile file(path);
    return !path.isEmpty() && file.open(QIODevice::ReadOnly)
           && file.read(4) == QByteArray(":-)\0", 4);
}

// The fields of a sealed file and their offsets. The last two depend on its length.
struct Field
{
    const char *name;
    qint64 offset;
    qint64 length;
};

QList<Field> fields(qint64 fileLength)
{
    return {
        { QT_TRANSLATE_NOOP("ContainerPage", "Magic"), 0, 4 },
        { QT_TRANSLATE_NOOP("ContainerPage", "Salt of the cipher key"), 4, 8 },
        { QT_TRANSLATE_NOOP("ContainerPage", "Salt of the HMAC key"), 12, 8 },
        { QT_TRANSLATE_NOOP("ContainerPage", "Initialisation vector"), 20, 16 },
        { QT_TRANSLATE_NOOP("ContainerPage", "AES-256-CBC ciphertext"), 36, fileLength - 68 },
        { QT_TRANSLATE_NOOP("ContainerPage", "HMAC-SHA256 tag"), fileLength - 32, 32 },
    };
}

// The name of a new file: "a.txt", or "a (2).txt" if that exists.
QString freePath(const QString &wanted)
{
    const QFileInfo info(wanted);
    QString path = wanted;
    for (int number = 2; QFileInfo::exists(path); ++number) {
        const QString suffix = info.suffix().isEmpty() ? QString() : u'.' + info.suffix();
        path = u"%1/%2 (%3)%4"_s.arg(info.path(), info.completeBaseName()).arg(number).arg(suffix);
    }
    return path;
}

class ContainerPage : public Page
{
public:
    explicit ContainerPage(QWidget *parent);
    ~ContainerPage() override;

    void showExample() override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void choose();
    void setSource(const QString &path);
    void ask(Direction direction);
    void start(Direction direction, const QString &passphrase);
    void finish();
    void updateControls();
    void showOutcome(const Outcome &outcome);
    void showFields(const QString &path);
    void highlightWell(bool isHighlighted);

    QFrame *m_well;
    QLabel *m_name;
    QLabel *m_details;
    QPushButton *m_choose;
    QPushButton *m_seal;
    QPushButton *m_open;
    QPushButton *m_cancel;
    QProgressBar *m_progress;
    QLabel *m_outcome;
    QFrame *m_anatomy;
    QList<QLabel *> m_anatomyTexts; // offset, length and first bytes of each field

    QString m_source;
    QString m_target;
    QFutureWatcher<Outcome> m_watcher;
    std::stop_source m_stop;
    std::unique_ptr<QTemporaryDir> m_exampleFolder;
};

ContainerPage::ContainerPage(QWidget *parent)
    : Page(::tr("Encrypted container"),
           ::tr("Encrypt a file with a passphrase, and open it again. The file is read in pieces, "
                "so it can have any size. Any changed byte is detected."),
           parent)
    , m_well(makeCard({}))
    , m_name(new QLabel)
    , m_details(new QLabel)
    , m_choose(new QPushButton(::tr("Choose &File…")))
    , m_seal(new QPushButton(::tr("&Seal")))
    , m_open(new QPushButton(::tr("&Open")))
    , m_cancel(new QPushButton(::tr("&Cancel")))
    , m_progress(new QProgressBar)
    , m_outcome(new QLabel)
    , m_anatomy(makeCard(::tr("What the sealed file holds")))
{
    setAcceptDrops(true);

    m_name->setFont(Theme::font(Theme::strong));
    m_name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_details->setForegroundRole(QPalette::PlaceholderText);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(Theme::unit / 2);
    texts->addWidget(m_name);
    texts->addWidget(m_details);
    auto *const row = new QHBoxLayout;
    row->addLayout(texts, 1);
    row->addWidget(m_choose);
    m_well->setObjectName(u"well"_s);
    m_well->setAccessibleName(::tr("File"));
    m_well->setMinimumHeight(12 * Theme::unit);
    static_cast<QVBoxLayout *>(m_well->layout())->addLayout(row);

    m_progress->setRange(0, progressSteps);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(::tr("Progress"));
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_seal);
    buttons->addWidget(m_open);
    buttons->addSpacing(Theme::unit);
    buttons->addWidget(m_progress, 1);
    buttons->addSpacing(Theme::unit);
    buttons->addWidget(m_cancel);

    m_outcome->setWordWrap(true);
    m_outcome->setMinimumHeight(4 * Theme::unit);
    m_outcome->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    m_outcome->setTextFormat(Qt::PlainText);

    auto *const layout = static_cast<QVBoxLayout *>(content());
    layout->addWidget(m_well);
    layout->addLayout(buttons);
    layout->addWidget(m_outcome);
    layout->addWidget(m_anatomy);
    layout->addStretch();

    auto *const grid = new QGridLayout;
    grid->setHorizontalSpacing(3 * Theme::unit);
    grid->setColumnStretch(3, 1);
    const QStringList headings { ::tr("Field"), ::tr("Offset"), ::tr("Length"),
                                 ::tr("First bytes") };
    for (int column = 0; column < headings.size(); ++column) {
        auto *const heading = new QLabel(headings[column]);
        grid->addWidget(heading, 0, column,
                        column == 1 || column == 2 ? Qt::AlignTrailing : Qt::AlignLeading);
    }
    int line = 1;
    for (const Field &field : fields(0)) {
        auto *const name = new QLabel(::tr(field.name));
        name->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(name, line, 0);
        for (int column = 1; column <= 3; ++column) {
            auto *const text = new QLabel;
            text->setFont(Theme::font(Theme::monospace));
            text->setAlignment((column < 3 ? Qt::AlignTrailing : Qt::AlignLeading)
                               | Qt::AlignVCenter);
            m_anatomyTexts.append(text);
            // Bytes run from left to right below a heading that may be at the right.
            grid->addWidget(text, line, column, column == 3 ? Qt::AlignLeading : Qt::Alignment());
        }
        ++line;
    }
    static_cast<QVBoxLayout *>(m_anatomy->layout())->addLayout(grid);

    connect(m_choose, &QPushButton::clicked, this, &ContainerPage::choose);
    connect(m_seal, &QPushButton::clicked, this, [this] { ask(Direction::seal); });
    connect(m_open, &QPushButton::clicked, this, [this] { ask(Direction::open); });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_stop.request_stop(); });
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this, nullptr, nullptr,
                          Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, m_cancel, &QPushButton::click);
    connect(&m_watcher, &QFutureWatcherBase::progressValueChanged, m_progress,
            &QProgressBar::setValue);
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &ContainerPage::finish);
    setSource({});
}

ContainerPage::~ContainerPage()
{
    m_stop.request_stop();
    m_watcher.waitForFinished();
}

void ContainerPage::showExample()
{
    m_exampleFolder = std::make_unique<QTemporaryDir>();
    QFile file(m_exampleFolder->filePath(::tr("Household budget.ods")));
    if (!file.open(QIODevice::WriteOnly) || !file.resize(7'340'032))
        return;
    file.close();
    setSource(file.fileName());
    QEventLoop loop;
    connect(&m_watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    start(Direction::seal, u"kitchen-saddle-ovation-drum"_s);
    loop.exec();
}

void ContainerPage::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1 || !QFileInfo(urls.first().toLocalFile()).isFile()
        || m_watcher.isRunning())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    highlightWell(true);
}

void ContainerPage::dragLeaveEvent(QDragLeaveEvent *event)
{
    highlightWell(false);
    Page::dragLeaveEvent(event);
}

void ContainerPage::dropEvent(QDropEvent *event)
{
    highlightWell(false);
    setSource(event->mimeData()->urls().constFirst().toLocalFile());
    event->setDropAction(Qt::CopyAction);
    event->accept();
    (isSealed(m_source) ? m_open : m_seal)->setFocus();
}

void ContainerPage::choose()
{
    const QString folder =
            m_source.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                               : QFileInfo(m_source).path();
    const QString path =
            QFileDialog::getOpenFileName(this, ::tr("Choose a file to seal or open"), folder);
    if (path.isEmpty())
        return;
    setSource(path);
    (isSealed(m_source) ? m_open : m_seal)->setFocus();
}

void ContainerPage::setSource(const QString &path)
{
    m_source = path;
    if (path.isEmpty()) {
        m_name->setText(::tr("Drop a file here"));
        m_details->setText(::tr("or choose one"));
    } else {
        const QFileInfo info(path);
        m_name->setText(info.fileName());
        const QString size = QLocale().formattedDataSize(info.size());
        m_details->setText(isSealed(path) ? ::tr("%1, sealed").arg(size) : size);
    }
    m_outcome->clear();
    m_outcome->setTextInteractionFlags(Qt::NoTextInteraction);
    m_progress->reset();
    showFields(path);
    updateControls();
}

void ContainerPage::ask(Direction direction)
{
    PassphraseDialog dialog(direction == Direction::seal ? PassphraseDialog::Purpose::create
                                                         : PassphraseDialog::Purpose::unlock,
                            this);
    dialog.setExplanation(direction == Direction::seal
                                  ? ::tr("Nothing else opens the file. The passphrase is stored "
                                         "nowhere.")
                                  : ::tr("The passphrase that the file was sealed under."));
    if (dialog.exec() == QDialog::Accepted)
        start(direction, dialog.takePassphrase());
}

void ContainerPage::start(Direction direction, const QString &passphrase)
{
    QString wanted = m_source + sealedSuffix;
    if (direction == Direction::open) {
        wanted = m_source.endsWith(sealedSuffix) ? m_source.chopped(sealedSuffix.size())
                                                 : m_source + u".opened"_s;
    }
    m_target = freePath(wanted);
    m_outcome->clear();
    m_outcome->setTextInteractionFlags(Qt::NoTextInteraction);
    m_anatomy->hide();
    m_progress->setValue(0);
    m_stop = std::stop_source();
    m_watcher.setFuture(QtConcurrent::run(
            run, Job { direction, m_source, m_target, passphrase, m_stop.get_token() }));
    updateControls();
    m_cancel->setFocus();
}

void ContainerPage::finish()
{
    showOutcome(m_watcher.result());
    updateControls();
    m_choose->setFocus();
}

void ContainerPage::updateControls()
{
    const bool isBusy = m_watcher.isRunning();
    for (QWidget *const widget : { static_cast<QWidget *>(m_seal), static_cast<QWidget *>(m_open) })
        widget->setEnabled(!isBusy && !m_source.isEmpty());
    m_choose->setEnabled(!isBusy);
    m_cancel->setEnabled(isBusy);
    m_progress->setEnabled(isBusy);
}

void ContainerPage::showOutcome(const Outcome &outcome)
{
    m_outcome->setText(outcome.text);
    m_outcome->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_outcome->setForegroundRole(outcome.isGood ? QPalette::WindowText : QPalette::BrightText);
    if (outcome.isGood)
        showFields(isSealed(m_target) ? m_target : m_source);
    else
        m_progress->reset();
    QAccessibleEvent announcement(m_outcome, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void ContainerPage::showFields(const QString &path)
{
    constexpr qint64 shortestContainer = 84;
    QFile file(path);
    const bool isWhole = isSealed(path) && file.size() >= shortestContainer;
    m_anatomy->setVisible(isWhole);
    if (!isWhole || !file.open(QIODevice::ReadOnly))
        return;
    int next = 0;
    for (const Field &field : fields(file.size())) {
        constexpr qint64 shownLength = 12;
        file.seek(field.offset);
        const QByteArray bytes = file.read(std::min(field.length, shownLength));
        const QString more = field.length > shownLength ? u" …"_s : QString();
        m_anatomyTexts[next++]->setText(QLocale().toString(field.offset));
        m_anatomyTexts[next++]->setText(QLocale().toString(field.length));
        m_anatomyTexts[next++]->setText(QString::fromLatin1(bytes.toHex(' ')) + more);
    }
}

void ContainerPage::highlightWell(bool isHighlighted)
{
    m_well->setObjectName(isHighlighted ? u"highlightedWell"_s : u"well"_s);
    m_well->update();
}

} // namespace

Page *makeContainerPage(QWidget *parent)
{
    return new ContainerPage(parent);
}
