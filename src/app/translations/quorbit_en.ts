<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="about.features">
        <source/>
        <translation>Clipboard sync · Keyboard and mouse sharing · Local network only</translation>
    </message>
    <message id="about.language.en">
        <source/>
        <translation>English</translation>
    </message>
    <message id="about.language.label">
        <source/>
        <translation>Interface language</translation>
    </message>
    <message id="about.language.restart_needed">
        <source/>
        <translation>Restart Quorbit to use the new language.</translation>
    </message>
    <message id="about.language.system">
        <source/>
        <translation>Same as system</translation>
    </message>
    <message id="about.language.system_hint">
        <source/>
        <translation>Quorbit follows your computer's language unless you choose one here.</translation>
    </message>
    <message id="about.language.zh">
        <source/>
        <translation>中文</translation>
    </message>
    <message id="about.restart_now">
        <source/>
        <translation>Restart now</translation>
    </message>
    <message id="about.section.language">
        <source/>
        <translation>Language</translation>
    </message>
    <message id="about.section.updates">
        <source/>
        <translation>Updates</translation>
    </message>
    <message id="about.tagline">
        <source/>
        <translation>One clipboard, one keyboard, every computer</translation>
    </message>
    <message id="about.version">
        <source/>
        <translation>Version %1</translation>
    </message>
    <message id="common.app_name">
        <source/>
        <translation>Quorbit</translation>
    </message>
    <message id="common.cancel">
        <source/>
        <translation>Cancel</translation>
    </message>
    <message id="common.dash">
        <source/>
        <translation>—</translation>
    </message>
    <message id="common.loading">
        <source/>
        <translation>Loading…</translation>
    </message>
    <message id="common.more">
        <source/>
        <translation>and %1 more</translation>
    </message>
    <message id="common.unnamed">
        <source/>
        <translation>Unnamed</translation>
    </message>
    <message id="devices.add">
        <source/>
        <translation>Add a computer</translation>
    </message>
    <message id="devices.add.connect.failed">
        <source/>
        <translation>Pairing failed. Check the address and the PIN.</translation>
    </message>
    <message id="devices.add.connect.hint">
        <source/>
        <translation>Enter the other computer's address and the PIN it shows.</translation>
    </message>
    <message id="devices.add.connect.host">
        <source/>
        <translation>Address or host name</translation>
    </message>
    <message id="devices.add.connect.pin">
        <source/>
        <translation>PIN</translation>
    </message>
    <message id="devices.add.connect.submit">
        <source/>
        <translation>Pair</translation>
    </message>
    <message id="devices.add.done">
        <source/>
        <translation>Done</translation>
    </message>
    <message id="devices.add.mode.connect">
        <source/>
        <translation>Enter a PIN</translation>
    </message>
    <message id="devices.add.mode.show">
        <source/>
        <translation>Show a PIN</translation>
    </message>
    <message id="devices.add.show.generate">
        <source/>
        <translation>Create a PIN</translation>
    </message>
    <message id="devices.add.show.hint">
        <source/>
        <translation>Type this PIN on the other computer.</translation>
    </message>
    <message id="devices.add.show.paired">
        <source/>
        <translation>Paired</translation>
    </message>
    <message id="devices.add.show.waiting">
        <source/>
        <translation>Waiting for the other computer…</translation>
    </message>
    <message id="devices.add.title">
        <source/>
        <translation>Add a computer</translation>
    </message>
    <message id="devices.empty.hint">
        <source/>
        <translation>Pair a computer on your local network to share the clipboard, keyboard and mouse.</translation>
    </message>
    <message id="devices.empty.title">
        <source/>
        <translation>No paired computers</translation>
    </message>
    <message id="devices.footer.hint">
        <source/>
        <translation>Removed computers must be paired again.</translation>
    </message>
    <message id="devices.fp">
        <source/>
        <translation>Fingerprint</translation>
    </message>
    <message id="devices.lastseen">
        <source/>
        <translation>Last seen</translation>
    </message>
    <message id="devices.offline">
        <source/>
        <translation>Offline</translation>
    </message>
    <message id="devices.online">
        <source/>
        <translation>Online</translation>
    </message>
    <message id="devices.unbind">
        <source/>
        <translation>Remove</translation>
    </message>
    <message id="devices.unpair.confirm">
        <source/>
        <translation>Remove</translation>
    </message>
    <message id="devices.unpair.message">
        <source/>
        <translation>%1 must be paired again before it can sync with this computer.</translation>
    </message>
    <message id="devices.unpair.title">
        <source/>
        <translation>Remove this computer?</translation>
    </message>
    <message id="kvm.accessibility.granted">
        <source/>
        <translation>Accessibility is allowed</translation>
    </message>
    <message id="kvm.accessibility.granted_desc">
        <source/>
        <translation>Quorbit may move the pointer and type on your behalf.</translation>
    </message>
    <message id="kvm.accessibility.needs_restart">
        <source/>
        <translation>Accessibility needs a restart</translation>
    </message>
    <message id="kvm.accessibility.needs_restart_desc">
        <source/>
        <translation>The new permission takes effect once Quorbit restarts. If that does not happen by itself, quit Quorbit and open it again.</translation>
    </message>
    <message id="kvm.accessibility.not_granted">
        <source/>
        <translation>Accessibility is not allowed yet</translation>
    </message>
    <message id="kvm.accessibility.not_granted_desc">
        <source/>
        <translation>Quorbit needs it to move the pointer and type on your behalf. Allow it in the system settings, then restart.</translation>
    </message>
    <message id="kvm.behavior.footer">
        <source/>
        <translation>A short delay keeps the pointer from crossing by accident.</translation>
    </message>
    <message id="kvm.canvas.drag_arrange">
        <source/>
        <translation>Drag screens to match your desk</translation>
    </message>
    <message id="kvm.canvas.local">
        <source/>
        <translation>this computer</translation>
    </message>
    <message id="kvm.canvas.no_peer">
        <source/>
        <translation>Pair another computer to arrange the screens.</translation>
    </message>
    <message id="kvm.canvas.offline">
        <source/>
        <translation>Offline</translation>
    </message>
    <message id="kvm.canvas.online">
        <source/>
        <translation>Online</translation>
    </message>
    <message id="kvm.canvas.place.above">
        <source/>
        <translation>Above %1.</translation>
    </message>
    <message id="kvm.canvas.place.below">
        <source/>
        <translation>Below %1.</translation>
    </message>
    <message id="kvm.canvas.place.left_of">
        <source/>
        <translation>Left of %1.</translation>
    </message>
    <message id="kvm.canvas.place.right_of">
        <source/>
        <translation>Right of %1.</translation>
    </message>
    <message id="kvm.canvas.place.same_place">
        <source/>
        <translation>In the same place as %1.</translation>
    </message>
    <message id="kvm.canvas.tap_master">
        <source/>
        <translation>Click a screen to make it the master</translation>
    </message>
    <message id="kvm.corner_size">
        <source/>
        <translation>Dead corners</translation>
    </message>
    <message id="kvm.corner_size.off">
        <source/>
        <translation>Off</translation>
    </message>
    <message id="kvm.enable">
        <source/>
        <translation>Share keyboard and mouse</translation>
    </message>
    <message id="kvm.grant">
        <source/>
        <translation>Allow…</translation>
    </message>
    <message id="kvm.master.linux_hotkey">
        <source/>
        <translation>Hotkeys are handled by the service on that Linux computer.</translation>
    </message>
    <message id="kvm.master.local_footer">
        <source/>
        <translation>This computer's keyboard and mouse drive the others.</translation>
    </message>
    <message id="kvm.master.none">
        <source/>
        <translation>No master yet. Click the screen whose keyboard and mouse you use.</translation>
    </message>
    <message id="kvm.master.peer_global">
        <source/>
        <translation>The keyboard and mouse of %1 drive the others.</translation>
    </message>
    <message id="kvm.restart_helper">
        <source/>
        <translation>Restart</translation>
    </message>
    <message id="kvm.restart_hint">
        <source/>
        <translation>This takes effect once the Quorbit service restarts.</translation>
    </message>
    <message id="kvm.section.accessibility">
        <source/>
        <translation>Permission</translation>
    </message>
    <message id="kvm.section.behavior">
        <source/>
        <translation>Behaviour</translation>
    </message>
    <message id="kvm.section.layout">
        <source/>
        <translation>Screens</translation>
    </message>
    <message id="kvm.section.toggle">
        <source/>
        <translation>Keyboard and mouse</translation>
    </message>
    <message id="kvm.sensitivity">
        <source/>
        <translation>Pointer speed</translation>
    </message>
    <message id="kvm.sensitivity.auto">
        <source/>
        <translation>Automatic</translation>
    </message>
    <message id="kvm.status.controlled">
        <source/>
        <translation>Ready to be driven from %1</translation>
    </message>
    <message id="kvm.status.master_off">
        <source/>
        <translation>The master, %1, is not connected</translation>
    </message>
    <message id="kvm.status.need_ax">
        <source/>
        <translation>Allow accessibility below to start sharing</translation>
    </message>
    <message id="kvm.status.no_master">
        <source/>
        <translation>Choose a master screen below</translation>
    </message>
    <message id="kvm.status.ready">
        <source/>
        <translation>Ready. This computer is the master</translation>
    </message>
    <message id="kvm.status.waiting">
        <source/>
        <translation>Waiting for another computer to connect</translation>
    </message>
    <message id="kvm.swap_modifiers">
        <source/>
        <translation>Swap ⌘ and Ctrl</translation>
    </message>
    <message id="kvm.switch_delay">
        <source/>
        <translation>Switch delay</translation>
    </message>
    <message id="kvm.switch_delay.off">
        <source/>
        <translation>Off</translation>
    </message>
    <message id="kvm.tip.edge_switch">
        <source/>
        <translation>Move past a screen edge to switch computers.</translation>
    </message>
    <message id="kvm.tip.escape_hotkey">
        <source/>
        <translation>The escape hotkey brings the pointer back at any time.</translation>
    </message>
    <message id="kvm.tip.lock_hotkey">
        <source/>
        <translation>The lock hotkey keeps the pointer on one screen.</translation>
    </message>
    <message id="kvm.tip.mdns">
        <source/>
        <translation>Paired computers find each other on the local network.</translation>
    </message>
    <message id="kvm.tip.reverse">
        <source/>
        <translation>Move back across the same edge to return.</translation>
    </message>
    <message id="menu.connected">
        <source/>
        <translation>Connected</translation>
    </message>
    <message id="menu.daemon_disconnected">
        <source/>
        <translation>Service unreachable. Reopen Quorbit.</translation>
    </message>
    <message id="menu.history_header">
        <source/>
        <translation>Recent clipboard</translation>
    </message>
    <message id="menu.no_devices">
        <source/>
        <translation>No paired computers yet</translation>
    </message>
    <message id="menu.pause_sync">
        <source/>
        <translation>Pause syncing</translation>
    </message>
    <message id="menu.quit">
        <source/>
        <translation>Quit Quorbit</translation>
    </message>
    <message id="menu.settings">
        <source/>
        <translation>Settings…</translation>
    </message>
    <message id="menu.status.connected">
        <source/>
        <translation>Connected to the service</translation>
    </message>
    <message id="menu.status.disconnected">
        <source/>
        <translation>Service unreachable</translation>
    </message>
    <message id="menu.status.paused">
        <source/>
        <translation>Syncing is paused</translation>
    </message>
    <message id="menu.status.starting">
        <source/>
        <translation>Starting</translation>
    </message>
    <message id="menu.update_badge_tooltip">
        <source/>
        <translation>Quorbit %1 is available</translation>
    </message>
    <message id="menu.waiting_peer">
        <source/>
        <translation>Waiting for paired computers</translation>
    </message>
    <message id="overview.device_id">
        <source/>
        <translation>Device ID</translation>
    </message>
    <message id="overview.device_name">
        <source/>
        <translation>Device name</translation>
    </message>
    <message id="overview.peers.empty">
        <source/>
        <translation>No computers connected</translation>
    </message>
    <message id="overview.port">
        <source/>
        <translation>Port</translation>
    </message>
    <message id="overview.section.activity">
        <source/>
        <translation>Activity</translation>
    </message>
    <message id="overview.section.local">
        <source/>
        <translation>This computer</translation>
    </message>
    <message id="overview.section.peers">
        <source/>
        <translation>Connected computers</translation>
    </message>
    <message id="overview.status">
        <source/>
        <translation>Status</translation>
    </message>
    <message id="overview.status.paused">
        <source/>
        <translation>Paused</translation>
    </message>
    <message id="overview.status.running">
        <source/>
        <translation>Running</translation>
    </message>
    <message id="sync.file_cap.footer">
        <source/>
        <translation>Larger files stay on the computer where they were copied.</translation>
    </message>
    <message id="sync.file_cap.label">
        <source/>
        <translation>Largest file</translation>
    </message>
    <message id="sync.file_cap.unit">
        <source/>
        <translation>MB</translation>
    </message>
    <message id="sync.history.clear">
        <source/>
        <translation>Clear</translation>
    </message>
    <message id="sync.history.footer">
        <source/>
        <translation>Click an entry to put it back on the clipboard.</translation>
    </message>
    <message id="sync.history.hint">
        <source/>
        <translation>Puts this entry back on the clipboard</translation>
    </message>
    <message id="sync.history.no_match">
        <source/>
        <translation>No matching entries</translation>
    </message>
    <message id="sync.history.search">
        <source/>
        <translation>Search history</translation>
    </message>
    <message id="sync.section.history">
        <source/>
        <translation>Clipboard history</translation>
    </message>
    <message id="sync.section.transfer">
        <source/>
        <translation>Transfer</translation>
    </message>
    <message id="sync.section.types">
        <source/>
        <translation>Content to sync</translation>
    </message>
    <message id="sync.type.files">
        <source/>
        <translation>Files</translation>
    </message>
    <message id="sync.type.image">
        <source/>
        <translation>Images</translation>
    </message>
    <message id="sync.type.text">
        <source/>
        <translation>Text</translation>
    </message>
    <message id="tab.about">
        <source/>
        <translation>About</translation>
    </message>
    <message id="tab.devices">
        <source/>
        <translation>Devices</translation>
    </message>
    <message id="tab.kvm">
        <source/>
        <translation>KVM</translation>
    </message>
    <message id="tab.overview">
        <source/>
        <translation>Overview</translation>
    </message>
    <message id="tab.sync">
        <source/>
        <translation>Sync</translation>
    </message>
    <message id="update.available.subtitle">
        <source/>
        <translation>You have %1</translation>
    </message>
    <message id="update.available.title">
        <source/>
        <translation>Quorbit %1 is available</translation>
    </message>
    <message id="update.button.check">
        <source/>
        <translation>Check now</translation>
    </message>
    <message id="update.button.download">
        <source/>
        <translation>Download</translation>
    </message>
    <message id="update.checking">
        <source/>
        <translation>Checking for updates…</translation>
    </message>
    <message id="update.downloaded">
        <source/>
        <translation>Saved in your downloads folder</translation>
    </message>
    <message id="update.downloading">
        <source/>
        <translation>Downloading…</translation>
    </message>
    <message id="update.failed">
        <source/>
        <translation>The check failed. Try again later.</translation>
    </message>
    <message id="update.failed.network">
        <source/>
        <translation>Cannot reach the update server. Check your network.</translation>
    </message>
    <message id="update.failed.parse">
        <source/>
        <translation>The server's reply was unreadable. Try again later.</translation>
    </message>
    <message id="update.failed.server">
        <source/>
        <translation>The update server had a problem. Try again later.</translation>
    </message>
    <message id="update.last_checked">
        <source/>
        <translation>Last checked: %1</translation>
    </message>
    <message id="update.never_checked">
        <source/>
        <translation>Not checked yet</translation>
    </message>
    <message id="update.open_browser">
        <source/>
        <translation>Open in browser</translation>
    </message>
    <message id="update.uptodate">
        <source/>
        <translation>Quorbit %1 is up to date</translation>
    </message>
</context>
</TS>
