// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QList>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

/// One note: a text with markup.
class Note : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)

public:
    Note(const QString &text, QObject *parent)
        : QObject(parent)
        , m_text(text)
    { }

    QString text() const { return m_text; }
    void setText(const QString &text);
    /// The first line that is not empty.
    QString title() const { return m_text.trimmed().section(u'\n', 0, 0); }

Q_SIGNALS:
    void textChanged(const QString &text);

private:
    QString m_text;
};

/// The notes of one file, which is sealed under a passphrase. A change is saved a second later.
class Notebook : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    explicit Notebook(const QString &fileName, QObject *parent = nullptr);

    QString name() const; ///< the name of the file, without its folder
    bool exists() const { return QFile::exists(m_fileName); }
    bool isOpen() const { return m_passphrase.has_value(); }
    bool isEdited() const { return m_isEdited; } ///< whether there are changes to save
    QString state() const; ///< a few words for the title bar
    QString problem() const { return m_problem; } ///< the reason why the last attempt failed

    // False if that fails. problem() is then the reason, and the file is unchanged.
    bool create(const QString &passphrase);
    bool open(const QString &passphrase);
    Q_INVOKABLE bool save();
    bool changePassphrase(const QString &passphrase); ///< saves the notes under it

    /// Deletes the passphrase and the notes in memory, saved or not.
    void close();

    QList<Note *> notes() const { return m_notes; } ///< newest first
    Note *addNote();
    void removeNote(Note *note);

Q_SIGNALS:
    void changed();

private:
    bool lock();
    bool fail(QString problem);
    Note *insert(qsizetype index, const QString &text);
    void setEdited();

    QString m_fileName;
    QLockFile m_lock;
    QTimer m_autosave;
    std::optional<QString> m_passphrase; // kept while it is open: each save derives new keys
    QList<Note *> m_notes;
    QString m_problem;
    bool m_isEdited = false;
};
