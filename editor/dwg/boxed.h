#pragma once

#include <memory>
#include <utility>

namespace dwg {

/// A value that lies on the heap and is copied and compared like any other, so that what holds many kinds of values
/// isn't as large as the largest. Never empty, but after it was moved from.
template <class T> class Boxed {
public:
    Boxed() : held(std::make_unique<T>()) {}
    Boxed(T value) : held(std::make_unique<T>(std::move(value))) {}
    Boxed(const Boxed& other) : held(other.held ? std::make_unique<T>(*other.held) : nullptr) {}
    Boxed(Boxed&&) noexcept = default;
    Boxed& operator=(const Boxed& other) {
        held = other.held ? std::make_unique<T>(*other.held) : nullptr;
        return *this;
    }
    Boxed& operator=(Boxed&&) noexcept = default;
    ~Boxed() = default;

    T* get() { return held.get(); }
    const T* get() const { return held.get(); }
    T& operator*() { return *held; }
    const T& operator*() const { return *held; }
    bool operator==(const Boxed& other) const { return *held == *other.held; }

private:
    std::unique_ptr<T> held;
};

/// What few objects have: like std::optional, but no larger than a pointer.
template <class T> class Rare {
public:
    Rare() = default;
    Rare(const Rare& other) : held(other.held ? std::make_unique<T>(*other.held) : nullptr) {}
    Rare(Rare&&) noexcept = default;
    Rare& operator=(const Rare& other) {
        held = other.held ? std::make_unique<T>(*other.held) : nullptr;
        return *this;
    }
    Rare& operator=(Rare&&) noexcept = default;
    ~Rare() = default;

    explicit operator bool() const { return held != nullptr; }
    T& make() {
        if (!held)
            held = std::make_unique<T>();
        return *held;
    }
    void reset() { held.reset(); }
    T* operator->() { return held.get(); }
    const T* operator->() const { return held.get(); }
    T& operator*() { return *held; }
    const T& operator*() const { return *held; }
    bool operator==(const Rare& other) const {
        return held && other.held ? *held == *other.held : !held && !other.held;
    }

private:
    std::unique_ptr<T> held;
};

} // namespace dwg
