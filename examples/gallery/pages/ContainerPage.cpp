// SPDX-License-Identifier: MIT
// Seals a file under a passphrase and opens it again, on a worker thread, as a program would that
// offers "Save encrypted".
#include "../Page.h"
#include "../Theme.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

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
#include <QLineEdit>
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

using namespace Qt::StringLiterals;
using Pellarvine::CryptorError;
using Pellarvine::Decryptor;
using Pellarvine::Encryptor;

namespace {

constexpr qint64 chunkLength = 1 << 20;
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

QString describe(const CryptorError &error)
{
    switch (error.code()) {
    case CryptorError::invalidFileFormat:
        return tr("This is not a sealed file. Nothing was written.");
    case CryptorError::invalidHMAC:
        return tr("Wrong passphrase, or the file is damaged: the format cannot tell which. "
                  "Nothing was written.");
    case CryptorError::truncatedFile:
        return tr("The file is cut off within its header. Nothing was written.");
    }
    return {};
}

// Streams the source through an Encryptor or a Decryptor. The target appears only when all of it is
// written and, opening, verified.
template <typename Cryptor>
Outcome stream(QPromise<Outcome> &promise, const Job &job)
{
    QFile source(job.source);
    if (!source.open(QIODevice::ReadOnly))
        return { false, tr("Cannot read %1: %2").arg(job.source, source.errorString()) };
    QSaveFile target(job.target);
    if (!target.open(QIODevice::WriteOnly))
        return { false, tr("Cannot write %1: %2").arg(job.target, target.errorString()) };

    Cryptor cryptor(job.passphrase);
    const qint64 length = source.size();
    qint64 done = 0;
    target.write(cryptor.feed({})); // an empty file has a header too
    while (!source.atEnd()) {
        if (promise.isCanceled())
            return { false, tr("Cancelled. Nothing was written.") };
        const QByteArray chunk = source.read(chunkLength);
        if (chunk.isEmpty())
            return { false, tr("Cannot read %1: %2").arg(job.source, source.errorString()) };
        target.write(cryptor.feed(chunk));
        done += chunk.size();
        promise.setProgressValue(int(progressSteps * done / std::max(done, length)));
    }
    target.write(cryptor.finalize());
    promise.setProgressValue(progressSteps);
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
    try {
        promise.addResult(job.direction == Direction::seal ? stream<Encryptor>(promise, job)
                                                           : stream<Decryptor>(promise, job));
    } catch (const CryptorError &error) {
        promise.addResult(Outcome { false, describe(error) });
    }
}

bool isSealed(const QString &path)
{
    QFile file(path);
    return !path.isEmpty() && file.open(QIODevice::ReadOnly)
           && file.read(4) == QByteArray(":-)\0", 4);
}

// The fields of a sealed file and where they stand; the last two depend on its length.
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

// A name that is not taken: "a.txt", then "a (2).txt".
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
    void start(Direction direction);
    void finish();
    void updateControls();
    void showOutcome(const Outcome &outcome);
    void showFields(const QString &path);
    void highlightWell(bool isHighlighted);

    QFrame *m_well;
    QLabel *m_name;
    QLabel *m_details;
    QPushButton *m_choose;
    QLineEdit *m_passphrase;
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
    std::unique_ptr<QTemporaryDir> m_exampleFolder;
};

ContainerPage::ContainerPage(QWidget *parent)
    : Page(::tr("Encrypted container"),
           ::tr("Seal a file under a passphrase, and open it again. The file streams through in "
                "pieces, so its size does not matter; a changed byte anywhere is found."),
           parent)
    , m_well(makeCard({}))
    , m_name(new QLabel)
    , m_details(new QLabel)
    , m_choose(new QPushButton(::tr("Choose &File…")))
    , m_passphrase(new QLineEdit)
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
    m_well->setMinimumHeight(12 * Theme::unit);
    static_cast<QVBoxLayout *>(m_well->layout())->addLayout(row);

    m_passphrase->setEchoMode(QLineEdit::Password);
    m_passphrase->setPlaceholderText(::tr("Something long that you will remember"));
    m_passphrase->setAccessibleName(::tr("Passphrase"));
    auto *const show = new QPushButton(::tr("S&how"));
    show->setCheckable(true);
    auto *const label = new QLabel(::tr("&Passphrase"));
    label->setBuddy(m_passphrase);
    auto *const secret = new QHBoxLayout;
    secret->addWidget(label);
    secret->addWidget(m_passphrase, 1);
    secret->addWidget(show);

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
    m_outcome->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *const layout = static_cast<QVBoxLayout *>(content());
    layout->addWidget(m_well);
    layout->addLayout(secret);
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
            grid->addWidget(text, line, column);
        }
        ++line;
    }
    static_cast<QVBoxLayout *>(m_anatomy->layout())->addLayout(grid);

    connect(m_choose, &QPushButton::clicked, this, &ContainerPage::choose);
    connect(show, &QPushButton::toggled, this, [this](bool isShown) {
        m_passphrase->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    });
    connect(m_seal, &QPushButton::clicked, this, [this] { start(Direction::seal); });
    connect(m_open, &QPushButton::clicked, this, [this] { start(Direction::open); });
    connect(m_passphrase, &QLineEdit::returnPressed, this, [this] {
        if (m_seal->isEnabled())
            start(isSealed(m_source) ? Direction::open : Direction::seal);
    });
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_watcher.cancel(); });
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
    m_watcher.cancel();
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
    m_passphrase->setText(u"correct horse battery staple"_s);
    QEventLoop loop;
    connect(&m_watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    start(Direction::seal);
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
    m_passphrase->setFocus();
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
    m_passphrase->setFocus();
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
    m_progress->reset();
    showFields(path);
    updateControls();
}

void ContainerPage::start(Direction direction)
{
    QString wanted = m_source + sealedSuffix;
    if (direction == Direction::open) {
        wanted = m_source.endsWith(sealedSuffix) ? m_source.chopped(sealedSuffix.size())
                                                 : m_source + u".opened"_s;
    }
    m_target = freePath(wanted);
    m_outcome->clear();
    m_anatomy->hide();
    m_progress->setValue(0);
    m_watcher.setFuture(
            QtConcurrent::run(run, Job { direction, m_source, m_target, m_passphrase->text() }));
    updateControls();
    m_cancel->setFocus();
}

void ContainerPage::finish()
{
    // A cancelled future hands out no result.
    if (m_watcher.isCanceled())
        showOutcome({ false, ::tr("Cancelled. Nothing was written.") });
    else
        showOutcome(m_watcher.result());
    updateControls();
    m_passphrase->setFocus();
}

void ContainerPage::updateControls()
{
    const bool isBusy = m_watcher.isRunning();
    for (QWidget *const widget : { static_cast<QWidget *>(m_seal), static_cast<QWidget *>(m_open) })
        widget->setEnabled(!isBusy && !m_source.isEmpty());
    m_choose->setEnabled(!isBusy);
    m_passphrase->setEnabled(!isBusy);
    m_cancel->setEnabled(isBusy);
    m_progress->setEnabled(isBusy);
}

void ContainerPage::showOutcome(const Outcome &outcome)
{
    m_outcome->setText(outcome.text);
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
    m_well->setStyleSheet(u" "_s); // takes the rules of the new name
    m_well->setStyleSheet({});
}

} // namespace

Page *makeContainerPage(QWidget *parent)
{
    return new ContainerPage(parent);
}
