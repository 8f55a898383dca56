// SPDX-License-Identifier: MIT
#pragma once

#include <random>

/// Random numbers that are the same in each run with that seed.
class RandomNumbers
{
public:
    explicit RandomNumbers(unsigned seed)
        : m_engine(seed)
    { }

    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(m_engine); }

private:
    std::mt19937 m_engine;
};
