// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QDialog>

#include <memory>

namespace Pellarvine {

/// Asks for a passphrase: a new one, typed twice or made up, or the one of an existing container.
///
///     Pellarvine::PassphraseDialog dialog(Pellarvine::PassphraseDialog::Purpose::create, this);
///     dialog.setExplanation(tr("Only this passphrase opens the notebook."));
///     if (dialog.exec() == QDialog::Accepted)
///         notebook->seal(dialog.takePassphrase());
///
/// If an existing passphrase was wrong, call setError() and exec() again. Return accepts once the
/// passphrase is complete, Esc rejects. The dialog stores the passphrase nowhere. When it closes,
/// it overwrites the memory of its fields and empties them, except for texts that the program
/// shares with them. Copies in Qt's undo history and in the input method are out of its reach. Main
/// thread only.
class PELLARVINE_EXPORT PassphraseDialog : public QDialog
{
    Q_OBJECT
    Q_PROPERTY(QString explanation READ explanation WRITE setExplanation NOTIFY explanationChanged)
    Q_PROPERTY(QString error READ error WRITE setError NOTIFY errorChanged)

public:
    /// The purpose of the passphrase.
    enum class Purpose {
        create, ///< a new one: typed twice, or made up; shows an estimate of its strength
        unlock, ///< an existing one: typed once
    };
    Q_ENUM(Purpose)

    /// The purpose does not change.
    explicit PassphraseDialog(Purpose purpose, QWidget *parent = nullptr);
    ~PassphraseDialog() override;

    Purpose purpose() const; ///< as passed to the constructor

    /// Plain text above the fields. Default: empty, which takes no space.
    QString explanation() const;
    void setExplanation(const QString &explanation);

    /// Plain text below the fields, for example that the passphrase was wrong. Screen readers
    /// announce it. Typing clears it. Default: empty.
    QString error() const;
    void setError(const QString &error);

    /// The passphrase of an accepted dialog, else an empty text. The dialog keeps no copy; the
    /// caller wipes the text after use.
    QString takePassphrase();

    void done(int result) override;

Q_SIGNALS:
    void explanationChanged(const QString &explanation);
    void errorChanged(const QString &error);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
