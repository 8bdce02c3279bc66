#include "daemon/Records.h"

#include "daemon/PairingRecords.h"
#include "wire/Codec.h"

namespace quorbit::wire {

template Status decode<Status>(QByteArrayView);
template std::optional<Status> decode<std::optional<Status>>(QByteArrayView);
template std::optional<DaemonSettings> decode<std::optional<DaemonSettings>>(QByteArrayView);
template std::optional<std::vector<Device>> decode<std::optional<std::vector<Device>>>(QByteArrayView);
template std::optional<std::vector<HistoryEntry>>
    decode<std::optional<std::vector<HistoryEntry>>>(QByteArrayView);
template UpdateResult decode<UpdateResult>(QByteArrayView);
template std::optional<pairing::ShowReply> decode<std::optional<pairing::ShowReply>>(QByteArrayView);
template std::optional<pairing::ConnectReply> decode<std::optional<pairing::ConnectReply>>(QByteArrayView);

template QByteArray encode<DaemonSettings>(const DaemonSettings &);
template QByteArray encode<pairing::ShowRequest>(const pairing::ShowRequest &);
template QByteArray encode<pairing::ConnectRequest>(const pairing::ConnectRequest &);

} // namespace quorbit::wire
