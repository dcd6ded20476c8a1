// Two threads count on one number without a lock.

#include <cstdio>
#include <thread>

int main() {
    int count = 0;
    const auto add = [&] {
        for (int i = 0; i < 100'000; ++i)
            ++count;
    };
    std::thread first(add), second(add);
    first.join();
    second.join();
    std::printf("%d\n", count);
    return 0;
}
