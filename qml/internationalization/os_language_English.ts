<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>Quick Install</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Accept</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>Vorn license agreement</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>Custom path &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Select Directory</translation>
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
        <translation>Browse</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>Start Up Automatically</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>Create Shortcut</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>Installing...</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>One-click acceleration</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>simple</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>easy to use</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>stable</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>Smart cloud acceleration</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>Low latency</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>no freeze</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>Multi-platform, fully compatible</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>New generation acceleration engine adapt to multi-platform network</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>Finish Installation</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>Try It Now</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>Please wait...</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>The files are still being copied.</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>VornVPN could not be installed completely</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>Not available now</translation>
    </message>
    <message>
        <source>en</source>
        <translation>en</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>“%1” could not be written to “%2”: %3.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>“%1” could not be created: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>“%1” could not be read: %2.</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>Not copied: %1 of %2 files.</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>no rights</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>no room on the disk</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>no such directory</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>something else has this name</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>the disk is read-only</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>a link of somebody else has this name</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>not a regular file</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>a name in it is no text</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>unknown reason</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>The menu entry could not be created.</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>The automatic start could not be set up.</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>Leads to “%1”.</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>Needs administrator rights.</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>Nothing can be written there.</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>Too little room: %1 MB needed, %2 MB free.</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>“%1” is not a directory.</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>“%1” does not exist.</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>The installation found there will be updated.</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; Return</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>Change path</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Directory:</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>Enter some text...</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>Low latency, no lag</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>Simple,Easy,Stable</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>New generation acceleration engine, adapt to multi-platform network</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>Interface language</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>Installation directory</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Installation progress</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>Uninstall VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>Uninstall</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>Removing...</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN has been removed</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>VornVPN could not be removed completely</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>These files do not belong to VornVPN and were kept:</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>These could not be removed:</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Progress of the removal</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>missing</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>too large</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>in use</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>leads out of the directory</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>Start the uninstaller again with administrator rights.</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>The window of the uninstaller could not be loaded.</translation>
    </message>
</context>
</TS>
