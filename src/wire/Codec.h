#pragma once

#include "wire/Wire.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <vector>

/// The bodies of wire::decode and wire::encode. Included only by the source files that instantiate them,
/// because the JSON library is slow to compile.
namespace quorbit::wire::detail {

using Json = nlohmann::json;
using OrderedJson = nlohmann::ordered_json;

/// Deeper than any record, and shallow enough that a hostile document cannot fill the memory with brackets.
constexpr int maximumDepth = 512;

/// Whether brackets nest beyond the limit. A pass of its own, because the parser's callback costs several
/// times as much.
inline bool isTooDeep(QByteArrayView json) {
    int depth = 0;
    bool inString = false;
    for (auto next = json.begin(); next != json.end(); ++next) {
        if (inString) {
            if (*next == '\\' && next + 1 != json.end())
                ++next;
            else if (*next == '"')
                inString = false;
        } else if (*next == '"') {
            inString = true;
        } else if (*next == '[' || *next == '{') {
            if (++depth > maximumDepth)
                return true;
        } else if (*next == ']' || *next == '}') {
            --depth;
        }
    }
    return false;
}

/// Where a value lies in its document; kept on the stack and spelled out only when something is wrong.
class Path {
public:
    Path() = default;
    Path(const Path &parent, const char *key) : parent_(&parent), key_(key) {}
    Path(const Path &parent, std::size_t index) : parent_(&parent), index_(index) {}

    [[noreturn]] void fail(const char *problem) const {
        const std::string where = text();
        throw DecodeError(where.empty() ? problem : where + ": " + problem);
    }

private:
    std::string text() const {
        if (!parent_)
            return {};
        const std::string before = parent_->text();
        if (!key_)
            return before + "[" + std::to_string(index_) + "]";
        return before.empty() ? key_ : before + "." + key_;
    }

    const Path *parent_ = nullptr;
    const char *key_ = nullptr;
    std::size_t index_ = 0;
};

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <class T>
struct Reader;

template <class T>
T read(const Json &json, const Path &path) {
    return Reader<T>::read(json, path);
}

template <>
struct Reader<QString> {
    static QString read(const Json &json, const Path &path) {
        const auto *text = json.get_ptr<const std::string *>();
        if (!text)
            path.fail("expected a string");
        return QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size()));
    }
};

template <>
struct Reader<bool> {
    static bool read(const Json &json, const Path &path) {
        if (!json.is_boolean())
            path.fail("expected true or false");
        return json.get<bool>();
    }
};

template <>
struct Reader<double> {
    static double read(const Json &json, const Path &path) {
        if (!json.is_number())
            path.fail("expected a number");
        return json.get<double>();
    }
};

template <>
struct Reader<qint64> {
    static qint64 read(const Json &json, const Path &path) {
        constexpr double end = 9223372036854775808.0; // 2^63, the first value that does not fit
        if (const auto *positive = json.get_ptr<const Json::number_unsigned_t *>()) {
            if (*positive > static_cast<quint64>(std::numeric_limits<qint64>::max()))
                path.fail("does not fit in 64 bits");
            return static_cast<qint64>(*positive);
        }
        if (const auto *whole = json.get_ptr<const Json::number_integer_t *>())
            return *whole;
        const auto *number = json.get_ptr<const Json::number_float_t *>();
        if (!number || std::trunc(*number) != *number)
            path.fail("expected a whole number");
        // -2^63 itself is refused in this form: the JSON library also yields it for whole numbers just below.
        if (*number <= -end || *number >= end)
            path.fail("does not fit in 64 bits");
        return static_cast<qint64>(*number);
    }
};

template <class T>
struct Reader<std::optional<T>> {
    static std::optional<T> read(const Json &json, const Path &path) {
        if (json.is_null())
            return std::nullopt;
        return Reader<T>::read(json, path);
    }
};

template <class T>
struct Reader<std::vector<T>> {
    static std::vector<T> read(const Json &json, const Path &path) {
        if (!json.is_array())
            path.fail("expected an array");
        std::vector<T> values;
        values.reserve(json.size());
        for (const Json &element : json)
            values.push_back(Reader<T>::read(element, Path(path, values.size())));
        return values;
    }
};

template <class T>
struct Reader<std::map<QString, T>> {
    static std::map<QString, T> read(const Json &json, const Path &path) {
        if (!json.is_object())
            path.fail("expected an object");
        std::map<QString, T> values;
        for (auto member = json.begin(); member != json.end(); ++member) {
            const std::string &key = member.key();
            values.emplace(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())),
                           Reader<T>::read(member.value(), Path(path, key.c_str())));
        }
        return values;
    }
};

/// Records: every key of the field list, in its order; keys that the list does not know are ignored.
template <class Record>
struct Reader {
    static Record read(const Json &json, const Path &path) {
        if (!json.is_object())
            path.fail("expected an object");
        Record record{};
        const auto readField = [&]<class Value>(const Field<Record, Value> &field) {
            const Path here(path, field.key);
            const auto member = json.find(field.key);
            if (member != json.end())
                record.*field.member = Reader<Value>::read(*member, here);
            else if constexpr (!IsOptional<Value>::value)
                here.fail("is missing");
        };
        std::apply([&](const auto &...field) { (readField(field), ...); }, fieldsOf<Record>());
        return record;
    }
};

inline OrderedJson write(const QString &text) {
    return text.toStdString();
}
inline OrderedJson write(bool value) {
    return value;
}
inline OrderedJson write(qint64 value) {
    return static_cast<std::int64_t>(value);
}

inline OrderedJson write(double value) {
    if (!std::isfinite(value))
        throw EncodeError("a number is not finite");
    return value;
}

template <class Record>
requires requires {
    Record::fields();
}
OrderedJson write(const Record &record);

template <class T>
OrderedJson write(const std::vector<T> &values) {
    OrderedJson json = OrderedJson::array();
    for (const T &value : values)
        json.push_back(write(value));
    return json;
}

template <class T>
OrderedJson write(const std::map<QString, T> &values) {
    OrderedJson json = OrderedJson::object();
    for (const auto &[key, value] : values)
        json[key.toStdString()] = write(value);
    return json;
}

template <class Record>
requires requires {
    Record::fields();
}
OrderedJson write(const Record &record) {
    OrderedJson json = OrderedJson::object();
    const auto writeField = [&]<class Value>(const Field<Record, Value> &field) {
        if constexpr (IsOptional<Value>::value) {
            if (record.*field.member)
                json[field.key] = write(*(record.*field.member));
        } else {
            json[field.key] = write(record.*field.member);
        }
    };
    std::apply([&](const auto &...field) { (writeField(field), ...); }, fieldsOf<Record>());
    return json;
}

} // namespace quorbit::wire::detail

namespace quorbit::wire {

template <class Value>
Value decode(QByteArrayView json) {
    if (detail::isTooDeep(json))
        throw DecodeError("nested too deeply");
    detail::Json document;
    try {
        document = detail::Json::parse(json.begin(), json.end());
    } catch (const detail::Json::exception &error) {
        throw DecodeError(error.what());
    }
    return detail::read<Value>(document, detail::Path());
}

template <class Record>
QByteArray encode(const Record &record) {
    try {
        return QByteArray::fromStdString(detail::write(record).dump());
    } catch (const detail::Json::exception &error) {
        throw EncodeError(error.what());
    }
}

} // namespace quorbit::wire
