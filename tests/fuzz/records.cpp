#include "Property.h"

#include "daemon/PairingRecords.h"
#include "daemon/Records.h"
#include "wire/Codec.h"

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
    switch (data[0] % 7) {
    case 0:
        check<Status>(json);
        break;
    case 1:
        check<std::optional<DaemonSettings>>(json);
        break;
    case 2:
        check<std::optional<std::vector<Device>>>(json);
        break;
    case 3:
        check<std::optional<std::vector<HistoryEntry>>>(json);
        break;
    case 4:
        check<UpdateResult>(json);
        break;
    case 5:
        check<std::optional<pairing::ShowReply>>(json);
        break;
    default:
        check<std::optional<pairing::ConnectReply>>(json);
    }
    return 0;
}
