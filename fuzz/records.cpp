#include "Property.h"

#include "daemon/PairingRecords.h"
#include "daemon/Records.h"
#include "wire/Codec.h"

#include <array>

using namespace quorbit;

namespace {

template <class Record>
void checkEncoding(const Record &record) {
    HOLDS(wire::decode<Record>(wire::encode(record)) == record);
}
template <class Record>
void checkEncoding(const std::optional<Record> &record) {
    if (record)
        checkEncoding(*record);
}
template <class Record>
void checkEncoding(const std::vector<Record> &records) {
    for (const Record &record : records)
        checkEncoding(record);
}

/// What can be read can be written, and reads back as the same value.
template <class Value>
void check(QByteArrayView json) {
    Value value;
    try {
        value = wire::decode<Value>(json);
    } catch (const wire::DecodeError &error) {
        HOLDS(error.what()[0] != '\0');
        return;
    }
    checkEncoding(value);
}

} // namespace

/// Every record of the service's interface; the first byte chooses which.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    const QByteArrayView json(data + 1, static_cast<qsizetype>(size - 1));
    static constexpr std::array checks{check<Status>,
                                       check<std::optional<DaemonSettings>>,
                                       check<std::optional<std::vector<Device>>>,
                                       check<std::optional<std::vector<HistoryEntry>>>,
                                       check<UpdateResult>,
                                       check<std::optional<pairing::ShowReply>>,
                                       check<std::optional<pairing::ConnectReply>>};
    checks[data[0] % checks.size()](json);
    return 0;
}
