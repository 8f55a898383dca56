// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Ostrevane/CodebaseTicket.h>

#include <QList>
#include <QThread>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

/// Collects the calls of callbacks. A test waits for them without an event loop.
class Inbox
{
public:
    struct Call
    {
        std::optional<NS::URLError> error;
        QThread *thread = nullptr;
    };

    /// A callback. It may be called after the inbox was destroyed.
    Pellarvine::CodebaseTicket::Callback callback() const
    {
        return [content = m_content](const std::optional<NS::URLError> &error) {
            const std::lock_guard lock(content->mutex);
            content->calls.append({ error, QThread::currentThread() });
            content->hasGrown.notify_all();
        };
    }

    /// All calls so far. Waits until there are `count` of them, at most half a minute.
    QList<Call> waitFor(qsizetype count) const
    {
        std::unique_lock lock(m_content->mutex);
        m_content->hasGrown.wait_for(lock, std::chrono::seconds(30),
                                     [&] { return m_content->calls.size() >= count; });
        return m_content->calls;
    }

private:
    struct Content
    {
        std::mutex mutex;
        std::condition_variable hasGrown;
        QList<Call> calls;
    };
    std::shared_ptr<Content> m_content = std::make_shared<Content>();
};
