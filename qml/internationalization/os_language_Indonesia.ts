<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="id_ID" sourcelanguage="en">
<context>
    <name>main</name>
    <message>
        <source>VornVPN</source>
        <translation>VornVPN</translation>
    </message>
    <message>
        <source>Quick Install</source>
        <translation>Instal Cepat</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Setujui</translation>
    </message>
    <message>
        <source>Vorn license agreement</source>
        <translation>perjanjian lisensi Vorn</translation>
    </message>
    <message>
        <source>Custom path &gt;</source>
        <translation>Lokasi khusus &gt;</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Pilih Folder</translation>
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
        <translation>Telusuri</translation>
    </message>
    <message>
        <source>Start Up Automatically</source>
        <translation>Jalankan Otomatis</translation>
    </message>
    <message>
        <source>Create Shortcut</source>
        <translation>Buat Pintasan</translation>
    </message>
    <message>
        <source>Installing...</source>
        <translation>Menginstal...</translation>
    </message>
    <message>
        <source>One-click acceleration</source>
        <translation>Akselerasi satu klik</translation>
    </message>
    <message>
        <source>simple</source>
        <translation>sederhana</translation>
    </message>
    <message>
        <source>easy to use</source>
        <translation>mudah digunakan</translation>
    </message>
    <message>
        <source>stable</source>
        <translation>stabil</translation>
    </message>
    <message>
        <source>Smart cloud acceleration</source>
        <translation>Akselerasi cloud cerdas</translation>
    </message>
    <message>
        <source>Low latency</source>
        <translation>latensi rendah</translation>
    </message>
    <message>
        <source>no freeze</source>
        <translation>tanpa macet</translation>
    </message>
    <message>
        <source>Multi-platform, fully compatible</source>
        <translation>Multiplatform, sepenuhnya kompatibel</translation>
    </message>
    <message>
        <source>New generation acceleration engine adapt to multi-platform network</source>
        <translation>Mesin akselerasi generasi baru untuk jaringan multiplatform</translation>
    </message>
    <message>
        <source>Finish Installation</source>
        <translation>Instalasi Selesai</translation>
    </message>
    <message>
        <source>Try It Now</source>
        <translation>Coba Sekarang</translation>
    </message>
    <message>
        <source>Please wait...</source>
        <translation>Harap tunggu…</translation>
    </message>
    <message>
        <source>The files are still being copied.</source>
        <translation>Berkas masih disalin.</translation>
    </message>
    <message>
        <source>VornVPN could not be installed completely</source>
        <translation>VornVPN tidak dapat diinstal sepenuhnya</translation>
    </message>
    <message>
        <source>Not available now</source>
        <translation>Saat ini tidak tersedia</translation>
    </message>
    <message>
        <source>en</source>
        <translation>id</translation>
    </message>
    <message>
        <source>“%1” could not be written to “%2”: %3.</source>
        <translation>“%1” tidak dapat ditulis ke “%2”: %3.</translation>
    </message>
    <message>
        <source>“%1” could not be created: %2.</source>
        <translation>“%1” tidak dapat dibuat: %2.</translation>
    </message>
    <message>
        <source>“%1” could not be read: %2.</source>
        <translation>“%1” tidak dapat dibaca: %2.</translation>
    </message>
    <message>
        <source>Not copied: %1 of %2 files.</source>
        <translation>Tidak disalin: %1 dari %2 berkas.</translation>
    </message>
    <message>
        <source>no rights</source>
        <translation>tidak ada izin</translation>
    </message>
    <message>
        <source>no room on the disk</source>
        <translation>tidak ada ruang pada disk</translation>
    </message>
    <message>
        <source>no such directory</source>
        <translation>direktori tidak ada</translation>
    </message>
    <message>
        <source>something else has this name</source>
        <translation>nama ini sudah dipakai</translation>
    </message>
    <message>
        <source>the disk is read-only</source>
        <translation>disk hanya dapat dibaca</translation>
    </message>
    <message>
        <source>a link of somebody else has this name</source>
        <translation>tautan milik pengguna lain memakai nama ini</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>bukan berkas biasa</translation>
    </message>
    <message>
        <source>a name in it is no text</source>
        <translation>ada nama di dalamnya yang bukan teks</translation>
    </message>
    <message>
        <source>unknown reason</source>
        <translation>sebab tidak diketahui</translation>
    </message>
    <message>
        <source>The menu entry could not be created.</source>
        <translation>Entri menu tidak dapat dibuat.</translation>
    </message>
    <message>
        <source>The automatic start could not be set up.</source>
        <translation>Mulai otomatis tidak dapat diatur.</translation>
    </message>
    <message>
        <source>Leads to “%1”.</source>
        <translation>Mengarah ke “%1”.</translation>
    </message>
    <message>
        <source>Needs administrator rights.</source>
        <translation>Memerlukan hak administrator.</translation>
    </message>
    <message>
        <source>Nothing can be written there.</source>
        <translation>Tidak ada yang dapat ditulis di sana.</translation>
    </message>
    <message>
        <source>Too little room: %1 MB needed, %2 MB free.</source>
        <translation>Ruang tidak cukup: perlu %1 MB, tersedia %2 MB.</translation>
    </message>
    <message>
        <source>“%1” is not a directory.</source>
        <translation>“%1” bukan direktori.</translation>
    </message>
    <message>
        <source>“%1” does not exist.</source>
        <translation>“%1” tidak ada.</translation>
    </message>
    <message>
        <source>The installation found there will be updated.</source>
        <translation>Instalasi yang ada di sana akan diperbarui.</translation>
    </message>
    <message>
        <source>&lt; Return</source>
        <translation>&lt; Kembali</translation>
    </message>
    <message>
        <source>Change path</source>
        <translation>Ubah lokasi</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Folder:</translation>
    </message>
    <message>
        <source>Enter some text...</source>
        <translation>Masukkan teks...</translation>
    </message>
    <message>
        <source>Low latency, no lag</source>
        <translation>Latensi rendah, tanpa lag</translation>
    </message>
    <message>
        <source>Simple,Easy,Stable</source>
        <translation>Sederhana, mudah, stabil</translation>
    </message>
    <message>
        <source>New generation acceleration engine, adapt to multi-platform network</source>
        <translation>Mesin akselerasi generasi baru untuk jaringan multiplatform</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Tutup</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimalkan</translation>
    </message>
    <message>
        <source>Interface language</source>
        <translation>Bahasa antarmuka</translation>
    </message>
    <message>
        <source>Installation directory</source>
        <translation>Folder instalasi</translation>
    </message>
    <message>
        <source>Installation progress</source>
        <translation>Kemajuan instalasi</translation>
    </message>
</context>
<context>
    <name>uninstall</name>
    <message>
        <source>Uninstall VornVPN</source>
        <translation>Hapus Instalan VornVPN</translation>
    </message>
    <message>
        <source>This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.</source>
        <translation>Klien beserta entri menu dan entri mulai otomatisnya akan dihapus. File Anda sendiri di foldernya tetap disimpan.</translation>
    </message>
    <message>
        <source>Uninstall</source>
        <translation>Hapus Instalan</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Batal</translation>
    </message>
    <message>
        <source>Removing...</source>
        <translation>Menghapus...</translation>
    </message>
    <message>
        <source>VornVPN has been removed</source>
        <translation>VornVPN telah dihapus</translation>
    </message>
    <message>
        <source>VornVPN could not be removed completely</source>
        <translation>VornVPN tidak dapat dihapus sepenuhnya</translation>
    </message>
    <message>
        <source>These files do not belong to VornVPN and were kept:</source>
        <translation>File berikut bukan milik VornVPN dan tetap disimpan:</translation>
    </message>
    <message>
        <source>These could not be removed:</source>
        <translation>Berikut ini tidak dapat dihapus:</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Kemajuan penghapusan</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>tidak ada</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>terlalu besar</translation>
    </message>
    <message>
        <source>in use</source>
        <translation>sedang digunakan</translation>
    </message>
    <message>
        <source>leads out of the directory</source>
        <translation>mengarah ke luar direktori</translation>
    </message>
    <message>
        <source>Start the uninstaller again with administrator rights.</source>
        <translation>Jalankan kembali program penghapusan dengan hak administrator.</translation>
    </message>
    <message>
        <source>The window of the uninstaller could not be loaded.</source>
        <translation>Jendela program penghapusan tidak dapat dimuat.</translation>
    </message>
</context>
</TS>
