#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Ends the run, and so reports the input, when a property of the code under test does not hold.
#define HOLDS(condition)                                                                                     \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);              \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (false)

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace quorbit {

/// Takes values off an input's front; zeros once it is used up.
class InputReader {
public:
    InputReader(const std::uint8_t *data, std::size_t size) : data_(data), size_(size) {}

    std::uint8_t byte() {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++;
    }

    template <class Number>
    Number number() {
        Number value{};
        auto *bytes = reinterpret_cast<std::uint8_t *>(&value);
        for (std::size_t index = 0; index < sizeof value; ++index)
            bytes[index] = byte();
        return value;
    }

    /// Up to the next byte of the value zero, which is left out, or to the end.
    QByteArray line() {
        QByteArray text;
        while (size_ > 0) {
            const char next = static_cast<char>(byte());
            if (next == 0)
                break;
            text.append(next);
        }
        return text;
    }

private:
    const std::uint8_t *data_;
    std::size_t size_;
};

} // namespace quorbit
