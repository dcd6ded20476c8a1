#pragma once

#include <functional>
#include <string>
#include <vector>

/// Measures that are no tests: each is a figure and the bound that it is to hold. A file of a bench folder adds rows by
/// a `const bench::Rows` of its own; the program runs all of them, or those whose names it is given.
namespace bench {

/// What is timed, and what is made ready for each run without being timed.
struct Run {
    std::function<void()> timed;
    std::function<void()> prepare = {};
};

enum class Clock {
    wall,
    cpu ///< of the whole process
};

class Table {
public:
    /// Runs both once to warm up, then both in turn seven times; the figure is the quotient of the medians.
    void Ratio(const std::string& name, double bound, const Run& work, const Run& floor, Clock clock = Clock::wall);
    /// A figure that was measured elsewhere; at most the bound.
    void Value(const std::string& name, double value, const std::string& unit, double bound);
    /// A figure without a bound.
    void Note(const std::string& name, double value, const std::string& unit);
    /// 0, or 1 where a bound is missed by more than a tenth.
    int Result() const { return broken ? 1 : 0; }

private:
    void Print(const std::string& name, double value, const std::string& unit, double bound, const std::string& detail);

    bool broken = false;
};

/// Median of seven runs, in seconds.
double Median(const Run& run, Clock clock = Clock::wall);

/// A group of rows.
class Rows {
public:
    Rows(const char* name, void (*measure)(Table&));
};

/// Keeps what was computed from being left out by the compiler.
template <class T> void Keep(const T& value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

} // namespace bench
