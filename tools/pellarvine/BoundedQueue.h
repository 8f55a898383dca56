// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

/// Passes items from one thread to another. At most `capacity` items wait.
template <typename Item>
class BoundedQueue
{
public:
    explicit BoundedQueue(std::size_t capacity)
        : m_capacity(capacity)
    { }

    /// Waits until there is room. Does nothing if the queue is closed.
    void push(Item item)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_items.size() < m_capacity || m_isClosed; });
        if (!m_isClosed)
            m_items.push_back(std::move(item));
        m_changed.notify_all();
    }

    /// Waits for an item. Nothing if the queue is closed and empty.
    std::optional<Item> pop()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_items.empty() || m_isClosed; });
        if (m_items.empty())
            return std::nullopt;
        std::optional<Item> item(std::move(m_items.front()));
        m_items.pop_front();
        m_changed.notify_all();
        return item;
    }

    /// Closes the queue: there are no more items, or none are wanted.
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }

private:
    const std::size_t m_capacity;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Item> m_items;
    bool m_isClosed = false;
};
