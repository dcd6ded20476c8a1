#pragma once

#include <chrono>

/// The time that one call on the main thread may take, well below what a user notices.
class HopBudget {
public:
    bool Spent() const { return std::chrono::steady_clock::now() >= end; }

private:
    const std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + std::chrono::milliseconds(4);
};
