#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHashFunctions>
#include <QString>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <utility>

/// Records that cross a JSON interface. A record is an aggregate that lists its fields once:
///
///     struct PeerStatus {
///         QString device_id;
///         QString name;
///         static constexpr auto fields()
///         {
///             return std::tuple{wire::Field{"device_id", &PeerStatus::device_id},
///                               wire::Field{"name", &PeerStatus::name}};
///         }
///         bool operator==(const PeerStatus &) const = default;
///     };
///
/// A std::optional member is an optional key; every other member is required. The record's own source file
/// includes wire/Codec.h and instantiates the functions below for it.
namespace quorbit::wire {

/// One key of a record and the member that holds its value.
template <class Record, class Value>
struct Field {
    constexpr Field(const char *wireKey, Value Record::*recordMember) : key(wireKey), member(recordMember) {}

    const char *key;
    Value Record::*member;
};

/// A document that is not JSON or does not fit its record; what() says where and why: "peers[2].name:
/// expected a string".
class DecodeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value that JSON cannot hold, such as a number that is not finite.
class EncodeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a record, an optional record (JSON null is no record) or a std::vector of records. Strict: a missing
/// key, a null under a required key or a value of the wrong type fails the whole document. Throws
/// DecodeError.
template <class Value>
Value decode(QByteArrayView json);

/// Writes a record as compact JSON, its keys in the order of its fields, without the optional ones that hold
/// no value. Throws EncodeError.
template <class Record>
QByteArray encode(const Record &record);

namespace detail {

struct AnyValue {
    template <class T>
    operator T() const;
};

template <class Record, class... Values>
consteval std::size_t memberCount() {
    if constexpr (requires { Record{Values{}..., AnyValue{}}; })
        return memberCount<Record, Values..., AnyValue>();
    else
        return sizeof...(Values);
}

} // namespace detail

/// The field list of a record; does not compile while a member is missing from it.
template <class Record>
constexpr auto fieldsOf() {
    static_assert(std::is_aggregate_v<Record>);
    static_assert(detail::memberCount<Record>() == std::tuple_size_v<decltype(Record::fields())>,
                  "fields() must name every member of the record");
    return Record::fields();
}

/// The hash of every field of a record; an absent value hashes differently from every present one.
template <class Record>
std::size_t hash(const Record &record, std::size_t seed = 0) {
    const auto mix = [&seed](const auto &value) {
        seed ^= qHash(value, 0) + 0x9e3779b9 + (seed << 6) + (seed >> 2);
    };
    const auto add = [&]<class Value>(const Value &value) {
        if constexpr (requires { value.has_value(); }) {
            mix(value.has_value());
            if (value)
                mix(*value);
        } else {
            mix(value);
        }
    };
    std::apply([&](const auto &...field) { (add(record.*field.member), ...); }, fieldsOf<Record>());
    return seed;
}

} // namespace quorbit::wire
