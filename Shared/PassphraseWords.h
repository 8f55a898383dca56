// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>
#include <QStringView>

/// @file
/// Passphrases made of random words, and an estimate of how hard a passphrase is to guess:
///
///     const QString passphrase = Pellarvine::generatedPassphrase();
///     // "quiver-salad-thatch-ovation-nickel-drum", for example
///     const double bits = Pellarvine::estimatedPassphraseEntropy(passphrase); // about 77
///
/// The functions may be called from any thread.
namespace Pellarvine {

/// Returns `words` random words, at least 1, joined by hyphens. Each is one of 7776 English words
/// of four to eight letters and adds 12.9 bits of entropy. They are chosen by secureRandomData().
PELLARVINE_EXPORT QString generatedPassphrase(int words = 6);

/// Estimates the entropy in bits: the base-2 logarithm of the number of guesses of an attacker who
/// tries common passwords, words of the list, years, repeated characters and neighbouring keys
/// first. Any other character counts as a random one of its kind; spaces and hyphens do not count.
/// 0 for an empty text. The estimate is too high for quotations and for words of other languages.
PELLARVINE_EXPORT double estimatedPassphraseEntropy(QStringView passphrase);

} // namespace Pellarvine
