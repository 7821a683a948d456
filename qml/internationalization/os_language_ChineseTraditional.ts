<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>快速安裝</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>同意</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>Vorn 授權協議</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>自訂路徑 &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>選擇資料夾</translation>
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
        <translation>瀏覽</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>開機時自動啟動</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>建立捷徑</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>正在安裝…</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>一鍵加速</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>簡單</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>易用</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>穩定</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>智慧雲端加速</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>低延遲</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>不卡頓</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>跨平台，全面相容</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>新一代加速引擎，適應多平台網路</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>安裝完成</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>立即體驗</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>請稍候…</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>檔案仍在複製中。</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>VornVPN 未能完整安裝</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>目前無法使用</translation>
    </message>
    <message>
        <source>en</source>
        <translation>zh_TW</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>無法將「%1」寫入「%2」：%3。</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>無法建立「%1」：%2。</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>無法讀取「%1」：%2。</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>未複製：%2 個檔案中的 %1 個。</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>沒有權限</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>磁碟空間不足</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>沒有此目錄</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>此名稱已被占用</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>磁碟是唯讀的</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>此名稱是其他使用者的連結</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>不是一般檔案</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>其中有無法辨識的名稱</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>原因不明</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>無法建立選單項目。</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>無法設定自動啟動。</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>指向「%1」。</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>需要系統管理員權限。</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>該位置無法寫入。</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>空間不足：需要 %1 MB，可用 %2 MB。</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>「%1」不是目錄。</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>「%1」不存在。</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>將更新該處已有的安裝。</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; 返回</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>變更路徑</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>資料夾：</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>請輸入文字…</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>低延遲，零卡頓</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>簡單、易用、穩定</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>新一代加速引擎，適應多平台網路</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>關閉</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>介面語言</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>安裝資料夾</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>安裝進度</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>解除安裝 VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>這將移除用戶端及其選單項目與自動啟動項目。資料夾中您自己的檔案會保留。</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>解除安裝</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>正在移除…</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN 已移除</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>無法完全移除 VornVPN</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>以下檔案不屬於 VornVPN，已保留：</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>以下項目無法移除：</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>移除進度</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>不存在</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>過大</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>正在使用</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>指向目錄之外</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>請以管理員權限重新執行解除安裝程式。</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>無法載入解除安裝程式的視窗。</translation>
    </message>
</context>
</TS>
