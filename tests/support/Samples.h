#pragma once

#include <QByteArray>

/// Documents as the service sends them, every key present.
namespace quorbit::test {

inline const QByteArray statusJson =
    R"({"device_id":"d1","device_name":"Desk","platform":"linux","port":24800,"paused":false,)"
    R"("peers":[{"device_id":"d2","name":"Lap"}],"last_activity":"text","accessibility_granted":true,)"
    R"("accessibility_needs_restart":false,"version":"1.2.0","local_screen_w":1440.0,"local_screen_h":900.5,)"
    R"("local_displays":[[0.0,0.0,1440.0,900.0],[1440.0,0.0,1.0,1.5]],)"
    R"("file_xfer":{"name":"a.bin","count":2,"sent":1,"total":9007199254740993,"sending":true}})";

inline const QByteArray settingsJson =
    R"({"device_name":"Desk","port":24800,"file_size_cap_mb":100,"sync_text":true,"sync_image":false,)"
    R"("sync_files":true,"kvm_enabled":false,"kvm_side":"left","kvm_master":true,)"
    R"("kvm_switch_delay_ms":250,"kvm_corner_size":16,"kvm_swap_modifiers":false,"kvm_sensitivity":1.25,)"
    R"("kvm_screens":{"d1":{"x":0.0,"y":0.0,"w":1440.0,"h":900.0}},)"
    R"("kvm_layout":{"d1":{"x":0.0,"y":0.0,"w":1440.0,"h":900.0},)"
    R"("d2":{"x":-1778.0,"y":0.1,"w":1778.0,"h":1000.0}},)"
    R"("kvm_master_id":"d1","kvm_layout_ver":9007199254740993})";

inline const QByteArray devicesJson =
    R"([{"device_id":"d2","name":"Lap","platform":"darwin","fingerprint":"aa:bb","online":true,)"
    R"("last_seen":1700000000500,"paired_at":5}])";

inline const QByteArray historyJson =
    R"([{"id":7,"type":"text","source":"Lap","label":"hello","time":5},{"id":8}])";

} // namespace quorbit::test
