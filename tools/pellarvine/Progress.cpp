// SPDX-License-Identifier: MIT
#include "Progress.h"

#include <QLocale>

#include <cmath>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

Progress::Progress(bool isQuiet, qint64 total)
    : m_isShown(!isQuiet && isatty(STDERR_FILENO))
    , m_total(total)
{ }

Progress::~Progress()
{
    if (m_isShown)
        std::fputs("\r\033[K", stderr);
}

void Progress::show(qint64 done)
{
    if (!m_isShown)
        return;
    const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
    std::fprintf(stderr, "\r\033[K%s", qPrintable(progressText(done, m_total, seconds)));
    std::fflush(stderr);
}

QString progressText(qint64 done, qint64 total, double seconds)
{
    const QLocale locale = QLocale::c();
    const double rate = seconds > 0 ? double(done) / seconds : 0;
    QString text = locale.formattedDataSize(done, 1);
    if (total >= 0)
        text += u" of %1"_s.arg(locale.formattedDataSize(total, 1));
    if (total > 0)
        text += u", %1 %"_s.arg(std::min<qint64>(100 * done / total, 100));
    text += u", %1/s"_s.arg(locale.formattedDataSize(qint64(rate), 1));
    if (total > done && rate > 0) {
        const auto left = std::llround(double(total - done) / rate);
        text += u", %1:%2 left"_s.arg(left / 60).arg(left % 60, 2, 10, QChar(u'0'));
    }
    return text;
}
