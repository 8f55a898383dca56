// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

/// Hands items from one thread to another, at most `capacity` waiting.
template <typename Item>
class BoundedQueue
{
public:
    explicit BoundedQueue(std::size_t capacity)
        : m_capacity(capacity)
    { }

    /// Waits for room. Does nothing once the queue is closed.
    void push(Item item)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_items.size() < m_capacity || m_isClosed; });
        if (!m_isClosed)
            m_items.push_back(std::move(item));
        m_changed.notify_all();
    }

    /// Waits for an item. Nothing once the queue is closed and empty.
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

    /// No more items will come, or none is wanted.
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
