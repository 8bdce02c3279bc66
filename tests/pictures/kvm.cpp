#include "daemon/Fixture.h"
#include "pictures/Picture.h"
#include "settings/KvmStates.h"
#include "settings/KvmTab.h"

using namespace Qt::StringLiterals;

namespace quorbit {

std::vector<Picture> kvmPictures() {
    const auto world = std::make_shared<test::Fixture>();
    const auto make = [world](const TimeFormats &) {
        return std::make_unique<KvmTab>(*world->daemon, KvmServices());
    };
    std::vector<Picture> pictures;
    for (const KvmState &state : kvmStates())
        pictures.push_back(
            {u"kvm/"_s + state.name, make, QSize(580, 1044), [state](QWidget &tab, const TimeFormats &) {
                 static_cast<KvmTab &>(tab).render(state.model());
             }});
    return pictures;
}

} // namespace quorbit
