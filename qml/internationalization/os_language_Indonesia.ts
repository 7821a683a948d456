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
        <source>Close</source>
        <translation>Tutup</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimalkan</translation>
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
        <source>and %1 more</source>
        <translation>dan %1 lainnya</translation>
    </message>
    <message>
        <source>Progress of the removal</source>
        <translation>Kemajuan penghapusan</translation>
    </message>
</context>
</TS>
