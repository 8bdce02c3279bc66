<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name></name>
    <message id="about.features">
        <source/>
        <translation>剪贴板同步 · 键鼠共享 · 仅限局域网</translation>
    </message>
    <message id="about.language.en">
        <source/>
        <translation>English</translation>
    </message>
    <message id="about.language.label">
        <source/>
        <translation>界面语言</translation>
    </message>
    <message id="about.language.restart_needed">
        <source/>
        <translation>重新启动 Quorbit 后，新的语言才会生效。</translation>
    </message>
    <message id="about.language.system">
        <source/>
        <translation>跟随系统</translation>
    </message>
    <message id="about.language.system_hint">
        <source/>
        <translation>未在此选择语言时，Quorbit 会跟随系统语言。</translation>
    </message>
    <message id="about.language.zh">
        <source/>
        <translation>中文</translation>
    </message>
    <message id="about.restart_now">
        <source/>
        <translation>立即重启</translation>
    </message>
    <message id="about.section.language">
        <source/>
        <translation>语言</translation>
    </message>
    <message id="about.section.updates">
        <source/>
        <translation>更新</translation>
    </message>
    <message id="about.tagline">
        <source/>
        <translation>一个剪贴板，一套键鼠，畅用每台电脑</translation>
    </message>
    <message id="about.version">
        <source/>
        <translation>版本 %1</translation>
    </message>
    <message id="common.app_name">
        <source/>
        <translation>Quorbit</translation>
    </message>
    <message id="common.cancel">
        <source/>
        <translation>取消</translation>
    </message>
    <message id="common.dash">
        <source/>
        <translation>—</translation>
    </message>
    <message id="common.loading">
        <source/>
        <translation>正在载入…</translation>
    </message>
    <message id="common.more">
        <source/>
        <translation>另有 %1 台</translation>
    </message>
    <message id="common.unnamed">
        <source/>
        <translation>未命名</translation>
    </message>
    <message id="devices.add">
        <source/>
        <translation>添加电脑</translation>
    </message>
    <message id="devices.add.connect.failed">
        <source/>
        <translation>配对失败，请检查地址和 PIN 码。</translation>
    </message>
    <message id="devices.add.connect.hint">
        <source/>
        <translation>输入另一台电脑的地址及其显示的 PIN 码。</translation>
    </message>
    <message id="devices.add.connect.host">
        <source/>
        <translation>地址或主机名</translation>
    </message>
    <message id="devices.add.connect.pin">
        <source/>
        <translation>PIN 码</translation>
    </message>
    <message id="devices.add.connect.submit">
        <source/>
        <translation>配对</translation>
    </message>
    <message id="devices.add.done">
        <source/>
        <translation>完成</translation>
    </message>
    <message id="devices.add.mode.connect">
        <source/>
        <translation>输入 PIN 码</translation>
    </message>
    <message id="devices.add.mode.show">
        <source/>
        <translation>显示 PIN 码</translation>
    </message>
    <message id="devices.add.show.generate">
        <source/>
        <translation>生成 PIN 码</translation>
    </message>
    <message id="devices.add.show.hint">
        <source/>
        <translation>在另一台电脑上输入此 PIN 码。</translation>
    </message>
    <message id="devices.add.show.paired">
        <source/>
        <translation>配对成功</translation>
    </message>
    <message id="devices.add.show.waiting">
        <source/>
        <translation>正在等待另一台电脑…</translation>
    </message>
    <message id="devices.add.title">
        <source/>
        <translation>添加电脑</translation>
    </message>
    <message id="devices.empty.hint">
        <source/>
        <translation>与局域网中的另一台电脑配对，即可共享剪贴板、键盘和鼠标。</translation>
    </message>
    <message id="devices.empty.title">
        <source/>
        <translation>尚未配对任何电脑</translation>
    </message>
    <message id="devices.footer.hint">
        <source/>
        <translation>移除的电脑需要重新配对。</translation>
    </message>
    <message id="devices.fp">
        <source/>
        <translation>指纹</translation>
    </message>
    <message id="devices.lastseen">
        <source/>
        <translation>上次在线</translation>
    </message>
    <message id="devices.offline">
        <source/>
        <translation>离线</translation>
    </message>
    <message id="devices.online">
        <source/>
        <translation>在线</translation>
    </message>
    <message id="devices.unbind">
        <source/>
        <translation>移除</translation>
    </message>
    <message id="devices.unpair.confirm">
        <source/>
        <translation>移除</translation>
    </message>
    <message id="devices.unpair.message">
        <source/>
        <translation>“%1”需要重新配对，才能再次与这台电脑同步。</translation>
    </message>
    <message id="devices.unpair.title">
        <source/>
        <translation>要移除这台电脑吗？</translation>
    </message>
    <message id="kvm.accessibility.granted">
        <source/>
        <translation>已允许辅助功能</translation>
    </message>
    <message id="kvm.accessibility.granted_desc">
        <source/>
        <translation>Quorbit 可以代你移动指针和输入文字。</translation>
    </message>
    <message id="kvm.accessibility.needs_restart">
        <source/>
        <translation>辅助功能需要重启</translation>
    </message>
    <message id="kvm.accessibility.needs_restart_desc">
        <source/>
        <translation>新权限将在 Quorbit 重启后生效。若未自动重启，请退出后重新打开。</translation>
    </message>
    <message id="kvm.accessibility.not_granted">
        <source/>
        <translation>尚未允许辅助功能</translation>
    </message>
    <message id="kvm.accessibility.not_granted_desc">
        <source/>
        <translation>Quorbit 需要此权限才能代你移动指针和输入文字。请在系统设置中允许后重启。</translation>
    </message>
    <message id="kvm.behavior.footer">
        <source/>
        <translation>稍加延迟，可避免指针意外越过屏幕边缘。</translation>
    </message>
    <message id="kvm.canvas.drag_arrange">
        <source/>
        <translation>拖动屏幕，使其与实际摆放一致</translation>
    </message>
    <message id="kvm.canvas.local">
        <source/>
        <translation>本机</translation>
    </message>
    <message id="kvm.canvas.no_peer">
        <source/>
        <translation>与另一台电脑配对后即可排列屏幕。</translation>
    </message>
    <message id="kvm.canvas.offline">
        <source/>
        <translation>离线</translation>
    </message>
    <message id="kvm.canvas.online">
        <source/>
        <translation>在线</translation>
    </message>
    <message id="kvm.canvas.place.above">
        <source/>
        <translation>位于“%1”上方。</translation>
    </message>
    <message id="kvm.canvas.place.below">
        <source/>
        <translation>位于“%1”下方。</translation>
    </message>
    <message id="kvm.canvas.place.left_of">
        <source/>
        <translation>位于“%1”左侧。</translation>
    </message>
    <message id="kvm.canvas.place.right_of">
        <source/>
        <translation>位于“%1”右侧。</translation>
    </message>
    <message id="kvm.canvas.place.same_place">
        <source/>
        <translation>与“%1”位置相同。</translation>
    </message>
    <message id="kvm.canvas.tap_master">
        <source/>
        <translation>点击屏幕，将其设为主控</translation>
    </message>
    <message id="kvm.corner_size">
        <source/>
        <translation>屏幕角落保护</translation>
    </message>
    <message id="kvm.corner_size.off">
        <source/>
        <translation>关闭</translation>
    </message>
    <message id="kvm.enable">
        <source/>
        <translation>共享键盘和鼠标</translation>
    </message>
    <message id="kvm.grant">
        <source/>
        <translation>允许…</translation>
    </message>
    <message id="kvm.master.linux_hotkey">
        <source/>
        <translation>快捷键由那台 Linux 电脑上的服务处理。</translation>
    </message>
    <message id="kvm.master.local_footer">
        <source/>
        <translation>使用本机的键盘和鼠标控制其他电脑。</translation>
    </message>
    <message id="kvm.master.none">
        <source/>
        <translation>尚未设置主控。请点击你要使用其键盘和鼠标的屏幕。</translation>
    </message>
    <message id="kvm.master.peer_global">
        <source/>
        <translation>使用“%1”的键盘和鼠标控制其他电脑。</translation>
    </message>
    <message id="kvm.restart_helper">
        <source/>
        <translation>重启</translation>
    </message>
    <message id="kvm.restart_hint">
        <source/>
        <translation>此更改将在 Quorbit 服务重启后生效。</translation>
    </message>
    <message id="kvm.section.accessibility">
        <source/>
        <translation>权限</translation>
    </message>
    <message id="kvm.section.behavior">
        <source/>
        <translation>行为</translation>
    </message>
    <message id="kvm.section.layout">
        <source/>
        <translation>屏幕</translation>
    </message>
    <message id="kvm.section.toggle">
        <source/>
        <translation>键盘和鼠标</translation>
    </message>
    <message id="kvm.sensitivity">
        <source/>
        <translation>指针速度</translation>
    </message>
    <message id="kvm.sensitivity.auto">
        <source/>
        <translation>自动</translation>
    </message>
    <message id="kvm.status.controlled">
        <source/>
        <translation>已就绪，可由“%1”控制</translation>
    </message>
    <message id="kvm.status.master_off">
        <source/>
        <translation>主控“%1”未连接</translation>
    </message>
    <message id="kvm.status.need_ax">
        <source/>
        <translation>请先在下方允许辅助功能，再开始共享</translation>
    </message>
    <message id="kvm.status.no_master">
        <source/>
        <translation>请在下方选择主控屏幕</translation>
    </message>
    <message id="kvm.status.ready">
        <source/>
        <translation>已就绪，本机为主控</translation>
    </message>
    <message id="kvm.status.waiting">
        <source/>
        <translation>正在等待其他电脑连接</translation>
    </message>
    <message id="kvm.swap_modifiers">
        <source/>
        <translation>交换 ⌘ 与 Ctrl</translation>
    </message>
    <message id="kvm.switch_delay">
        <source/>
        <translation>切换延迟</translation>
    </message>
    <message id="kvm.switch_delay.off">
        <source/>
        <translation>关闭</translation>
    </message>
    <message id="kvm.tip.edge_switch">
        <source/>
        <translation>将指针移过屏幕边缘，即可切换电脑。</translation>
    </message>
    <message id="kvm.tip.escape_hotkey">
        <source/>
        <translation>返回快捷键可随时让指针回到本机。</translation>
    </message>
    <message id="kvm.tip.lock_hotkey">
        <source/>
        <translation>锁定快捷键可让指针停留在一个屏幕上。</translation>
    </message>
    <message id="kvm.tip.mdns">
        <source/>
        <translation>已配对的电脑会在局域网中自动发现彼此。</translation>
    </message>
    <message id="kvm.tip.reverse">
        <source/>
        <translation>将指针移回同一边缘，即可返回。</translation>
    </message>
    <message id="menu.connected">
        <source/>
        <translation>已连接</translation>
    </message>
    <message id="menu.daemon_disconnected">
        <source/>
        <translation>无法连接服务，请重新打开 Quorbit。</translation>
    </message>
    <message id="menu.history_header">
        <source/>
        <translation>最近的剪贴板</translation>
    </message>
    <message id="menu.no_devices">
        <source/>
        <translation>尚未配对任何电脑</translation>
    </message>
    <message id="menu.pause_sync">
        <source/>
        <translation>暂停同步</translation>
    </message>
    <message id="menu.quit">
        <source/>
        <translation>退出 Quorbit</translation>
    </message>
    <message id="menu.settings">
        <source/>
        <translation>设置…</translation>
    </message>
    <message id="menu.status.connected">
        <source/>
        <translation>已连接服务</translation>
    </message>
    <message id="menu.status.disconnected">
        <source/>
        <translation>无法连接服务</translation>
    </message>
    <message id="menu.status.paused">
        <source/>
        <translation>同步已暂停</translation>
    </message>
    <message id="menu.status.starting">
        <source/>
        <translation>正在启动</translation>
    </message>
    <message id="menu.update_badge_tooltip">
        <source/>
        <translation>Quorbit %1 现已推出</translation>
    </message>
    <message id="menu.waiting_peer">
        <source/>
        <translation>正在等待已配对的电脑</translation>
    </message>
    <message id="overview.device_id">
        <source/>
        <translation>设备 ID</translation>
    </message>
    <message id="overview.device_name">
        <source/>
        <translation>设备名称</translation>
    </message>
    <message id="overview.peers.empty">
        <source/>
        <translation>没有已连接的电脑</translation>
    </message>
    <message id="overview.port">
        <source/>
        <translation>端口</translation>
    </message>
    <message id="overview.section.activity">
        <source/>
        <translation>动态</translation>
    </message>
    <message id="overview.section.local">
        <source/>
        <translation>本机</translation>
    </message>
    <message id="overview.section.peers">
        <source/>
        <translation>已连接的电脑</translation>
    </message>
    <message id="overview.status">
        <source/>
        <translation>状态</translation>
    </message>
    <message id="overview.status.paused">
        <source/>
        <translation>已暂停</translation>
    </message>
    <message id="overview.status.running">
        <source/>
        <translation>运行中</translation>
    </message>
    <message id="sync.file_cap.footer">
        <source/>
        <translation>超过此大小的文件只保留在复制它的电脑上。</translation>
    </message>
    <message id="sync.file_cap.label">
        <source/>
        <translation>文件大小上限</translation>
    </message>
    <message id="sync.file_cap.unit">
        <source/>
        <translation>MB</translation>
    </message>
    <message id="sync.history.clear">
        <source/>
        <translation>清除</translation>
    </message>
    <message id="sync.history.footer">
        <source/>
        <translation>点击条目，即可将其放回剪贴板。</translation>
    </message>
    <message id="sync.history.hint">
        <source/>
        <translation>将此条目放回剪贴板</translation>
    </message>
    <message id="sync.history.no_match">
        <source/>
        <translation>没有匹配的条目</translation>
    </message>
    <message id="sync.history.search">
        <source/>
        <translation>搜索历史记录</translation>
    </message>
    <message id="sync.section.history">
        <source/>
        <translation>剪贴板历史记录</translation>
    </message>
    <message id="sync.section.transfer">
        <source/>
        <translation>传输</translation>
    </message>
    <message id="sync.section.types">
        <source/>
        <translation>同步内容</translation>
    </message>
    <message id="sync.type.files">
        <source/>
        <translation>文件</translation>
    </message>
    <message id="sync.type.image">
        <source/>
        <translation>图片</translation>
    </message>
    <message id="sync.type.text">
        <source/>
        <translation>文本</translation>
    </message>
    <message id="tab.about">
        <source/>
        <translation>关于</translation>
    </message>
    <message id="tab.devices">
        <source/>
        <translation>设备</translation>
    </message>
    <message id="tab.kvm">
        <source/>
        <translation>KVM</translation>
    </message>
    <message id="tab.overview">
        <source/>
        <translation>概览</translation>
    </message>
    <message id="tab.sync">
        <source/>
        <translation>同步</translation>
    </message>
    <message id="update.available.subtitle">
        <source/>
        <translation>当前版本为 %1</translation>
    </message>
    <message id="update.available.title">
        <source/>
        <translation>Quorbit %1 现已推出</translation>
    </message>
    <message id="update.button.check">
        <source/>
        <translation>立即检查</translation>
    </message>
    <message id="update.button.download">
        <source/>
        <translation>下载</translation>
    </message>
    <message id="update.checking">
        <source/>
        <translation>正在检查更新…</translation>
    </message>
    <message id="update.downloaded">
        <source/>
        <translation>已保存到下载文件夹</translation>
    </message>
    <message id="update.downloading">
        <source/>
        <translation>正在下载…</translation>
    </message>
    <message id="update.failed">
        <source/>
        <translation>检查失败，请稍后再试。</translation>
    </message>
    <message id="update.failed.network">
        <source/>
        <translation>无法连接更新服务器，请检查网络。</translation>
    </message>
    <message id="update.failed.parse">
        <source/>
        <translation>无法读取服务器的回复，请稍后再试。</translation>
    </message>
    <message id="update.failed.server">
        <source/>
        <translation>更新服务器出现问题，请稍后再试。</translation>
    </message>
    <message id="update.last_checked">
        <source/>
        <translation>上次检查：%1</translation>
    </message>
    <message id="update.never_checked">
        <source/>
        <translation>尚未检查更新</translation>
    </message>
    <message id="update.open_browser">
        <source/>
        <translation>在浏览器中打开</translation>
    </message>
    <message id="update.uptodate">
        <source/>
        <translation>Quorbit %1 已是最新版本</translation>
    </message>
</context>
</TS>
