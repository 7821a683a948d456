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
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
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
        <source>and %1 more</source>
        <translation>以及另外 %1 项</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>卸载进度</translation>
    </message>
</context>
</TS>
