// SPDX-License-Identifier: MIT
#include "Notebook.h"

#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QByteArray written(const QStringList &texts)
{
    return QJsonDocument(QJsonObject { { u"notes"_s, QJsonArray::fromStringList(texts) } })
            .toJson(QJsonDocument::Compact);
}

// The texts in the JSON of written(). Nothing if it is something else.
std::optional<QStringList> read(const QByteArray &contents)
{
    const QJsonValue notes = QJsonDocument::fromJson(contents).object().value(u"notes"_s);
    if (!notes.isArray())
        return std::nullopt;
    QStringList texts;
    const QJsonArray array = notes.toArray();
    for (const auto &text : array) {
        if (!text.isString())
            return std::nullopt;
        texts.append(text.toString());
    }
    return texts;
}

QString explained(const Pellarvine::CryptorError &error, const QString &file)
{
    switch (error.code()) {
    case Pellarvine::CryptorError::invalidFileFormat:
        return Notebook::tr("%1 is not a sealed notebook.").arg(file);
    case Pellarvine::CryptorError::truncatedFile:
        return Notebook::tr("%1 is incomplete.").arg(file);
    case Pellarvine::CryptorError::invalidHMAC:
        break;
    }
    return Notebook::tr("The passphrase is wrong, or %1 is damaged.")
            .arg(file); // one error for both
}

} // namespace

void Note::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT textChanged(text);
}

Notebook::Notebook(const QString &fileName, QObject *parent)
    : QObject(parent)
    , m_fileName(fileName)
    , m_lock(fileName + u".lock"_s)
{
    m_lock.setStaleLockTime(0); // the lock is held as long as the notebook is open
    m_autosave.setSingleShot(true);
    m_autosave.setInterval(1000);
    connect(&m_autosave, &QTimer::timeout, this, &Notebook::save);
}

QString Notebook::name() const
{
    return QFileInfo(m_fileName).fileName();
}

QString Notebook::state() const
{
    if (!isOpen())
        return tr("Locked");
    if (!m_problem.isEmpty())
        return m_problem;
    return m_isEdited ? tr("Edited") : tr("Saved");
}

bool Notebook::create(const QString &passphrase)
{
    if (!lock())
        return false;
    if (exists())
        return fail(tr("The file %1 already exists.").arg(name()));
    m_passphrase = passphrase;
    return save() || fail(m_problem);
}

bool Notebook::open(const QString &passphrase)
{
    if (!lock())
        return false;
    QFile file(m_fileName);
    const QByteArray sealed = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (file.error() != QFile::NoError)
        return fail(tr("%1 cannot be read: %2").arg(name(), file.errorString()));
    try {
        const std::optional<QStringList> texts =
                read(Pellarvine::Decryptor::decrypt(sealed, passphrase));
        if (!texts)
            return fail(tr("%1 does not contain notes.").arg(name()));
        for (const QString &text : *texts)
            insert(m_notes.size(), text);
    } catch (const Pellarvine::CryptorError &error) {
        return fail(explained(error, name()));
    }
    m_passphrase = passphrase;
    m_problem.clear();
    Q_EMIT changed();
    return true;
}

bool Notebook::save()
{
    m_autosave.stop();
    QStringList texts;
    for (const Note *const note : std::as_const(m_notes))
        texts.append(note->text());
    const QByteArray sealed = Pellarvine::Encryptor::encrypt(written(texts), *m_passphrase);
    // Replaces the old file after all of the new one is on the disk, or not at all.
    QSaveFile file(m_fileName);
    const bool isSaved =
            file.open(QIODevice::WriteOnly) && file.write(sealed) == sealed.size() && file.commit();
    m_problem = isSaved ? QString() : tr("Not saved: %1").arg(file.errorString());
    m_isEdited = m_isEdited && !isSaved;
    Q_EMIT changed();
    return isSaved;
}

bool Notebook::changePassphrase(const QString &passphrase)
{
    const std::optional<QString> old = std::exchange(m_passphrase, passphrase);
    const bool isSaved = save();
    if (!isSaved)
        m_passphrase = old;
    return isSaved;
}

void Notebook::close()
{
    m_autosave.stop();
    m_passphrase.reset();
    // Deleted later, after the screens that show them, which are deleted later as well.
    for (Note *const note : std::as_const(m_notes))
        note->deleteLater();
    m_notes.clear();
    m_problem.clear();
    m_isEdited = false;
    m_lock.unlock();
    Q_EMIT changed();
}

Note *Notebook::addNote()
{
    setEdited();
    return insert(0, {});
}

void Notebook::removeNote(Note *note)
{
    m_notes.removeOne(note);
    delete note;
    setEdited();
}

// Prevents two programs from writing to the same file.
bool Notebook::lock()
{
    if (m_lock.tryLock())
        return true;
    return fail(m_lock.error() == QLockFile::LockFailedError
                        ? tr("%1 is open elsewhere.").arg(name())
                        : tr("The folder of %1 cannot be written to.").arg(name()));
}

bool Notebook::fail(QString problem)
{
    close();
    m_problem = std::move(problem);
    Q_EMIT changed();
    return false;
}

Note *Notebook::insert(qsizetype index, const QString &text)
{
    auto *const note = new Note(text, this);
    connect(note, &Note::textChanged, this, &Notebook::setEdited);
    m_notes.insert(index, note);
    return note;
}

void Notebook::setEdited()
{
    m_isEdited = true;
    m_autosave.start();
    Q_EMIT changed();
}
