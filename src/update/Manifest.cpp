#include "update/Manifest.h"

#include "wire/Codec.h"

namespace quorbit::wire {

template Manifest decode<Manifest>(QByteArrayView);
template QByteArray encode<Manifest>(const Manifest &);

} // namespace quorbit::wire
