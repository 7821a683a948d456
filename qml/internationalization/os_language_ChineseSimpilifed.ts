<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>快速安装</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>同意</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>Vorn 许可协议</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>自定义路径 &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>选择目录</translation>
    </message>
    <message>
        <source>/opt/VornVPN</source>
        <translation>/opt/VornVPN</translation>
    </message>
    <message>
        <source>C:\Program Files\VornVPN</source>
        <translation>C:\Program Files\VornVPN</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>浏览</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>开机自动启动</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>创建快捷方式</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>正在安装…</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>一键加速</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>简单</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>易用</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>稳定</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>智能云加速</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>低延迟</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>不卡顿</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>多平台，全兼容</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>新一代加速引擎，适应多平台网络</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>安装完成</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>立即体验</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>请稍候…</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>文件仍在复制中。</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>VornVPN 未能完整安装</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>目前不可用</translation>
    </message>
    <message>
        <source>en</source>
        <translation>zh_CN</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>无法将“%1”写入“%2”：%3。</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>无法创建“%1”：%2。</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>无法读取“%1”：%2。</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>未复制：%2 个文件中的 %1 个。</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>没有权限</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>磁盘空间不足</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>没有此目录</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>该名称已被占用</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>磁盘是只读的</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>该名称是其他用户的链接</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>不是普通文件</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>其中有无法识别的名称</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>原因不明</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>无法创建菜单项。</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>无法设置自动启动。</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>指向“%1”。</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>需要管理员权限。</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>该位置无法写入。</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>空间不足：需要 %1 MB，可用 %2 MB。</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>“%1”不是目录。</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>“%1”不存在。</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>将更新该处已有的安装。</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; 返回</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>更改路径</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>目录：</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>请输入文字…</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>低延迟，无卡顿</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>简单、易用、稳定</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>新一代加速引擎，适应多平台网络</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>界面语言</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>安装目录</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>安装进度</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>卸载 VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>这将移除客户端及其菜单项和自启动项。目录中您自己的文件会保留。</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>卸载</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>正在卸载…</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN 已卸载</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>未能完全卸载 VornVPN</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>以下文件不属于 VornVPN，已保留：</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>以下项目无法移除：</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>卸载进度</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>不存在</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>过大</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>正在使用</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>指向目录之外</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>请以管理员权限重新运行卸载程序。</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>无法加载卸载程序的窗口。</translation>
    </message>
</context>
</TS>
