<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- What the folder dialog shows, for a language that Qt itself has no translation for. -->
<TS version="2.1" language="id_ID" sourcelanguage="en">
<context>
    <name>QFileDialog</name>
    <message>
        <source>%1
Directory not found.
Please verify the correct directory name was given.</source>
        <translation>%1
Folder tidak ditemukan.
Pastikan nama folder sudah benar.</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
Berkas tidak ditemukan.
Pastikan nama berkas sudah benar.</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 sudah ada.
Ingin menggantinya?</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>&amp;Pilih</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Hapus</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>Folder &amp;Baru</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Buka</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Ganti Nama</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Simpan</translation>
    </message>
    <message>
        <source>'%1' is write protected.
Do you want to delete it anyway?</source>
        <translation>'%1' dilindungi dari penulisan.
Tetap ingin menghapusnya?</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Semua Berkas (*)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Semua berkas (*)</translation>
    </message>
    <message>
        <source>Are you sure you want to delete '%1'?</source>
        <translation>Yakin ingin menghapus '%1'?</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Mundur</translation>
    </message>
    <message>
        <source>Change to detail view mode</source>
        <translation>Tampilkan dengan rincian</translation>
    </message>
    <message>
        <source>Change to list view mode</source>
        <translation>Tampilkan sebagai daftar</translation>
    </message>
    <message>
        <source>Could not delete directory.</source>
        <translation>Folder tidak dapat dihapus.</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Buat Folder Baru</translation>
    </message>
    <message>
        <source>Create a New Folder</source>
        <translation>Buat Folder Baru</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Hapus</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Tampilan Rinci</translation>
    </message>
    <message>
        <source>Directories</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Folder:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>&amp;Nama berkas:</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Jenis berkas:</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Berkas</translation>
    </message>
    <message>
        <source>Find Directory</source>
        <translation>Cari Folder</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Maju</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Mundur</translation>
    </message>
    <message>
        <source>Go forward</source>
        <translation>Maju</translation>
    </message>
    <message>
        <source>Go to the parent directory</source>
        <translation>Ke folder induk</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Tampilan Daftar</translation>
    </message>
    <message>
        <source>List of places and bookmarks</source>
        <translation>Daftar tempat dan penanda</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>Lihat di:</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>Komputer Saya</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Folder Baru</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Buka</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Folder Induk</translation>
    </message>
    <message>
        <source>Recent Places</source>
        <translation>Tempat Terbaru</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Hapus dari daftar</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Simpan Sebagai</translation>
    </message>
    <message>
        <source>Show </source>
        <translation>Tampilkan </translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Tampilkan berkas &amp;tersembunyi</translation>
    </message>
    <message>
        <source>Sidebar</source>
        <translation>Bilah samping</translation>
    </message>
    <message>
        <source>Drive</source>
        <translation>Drive</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Berkas</translation>
    </message>
    <message>
        <source>File Folder</source>
        <translation>Folder berkas</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Tidak dikenal</translation>
    </message>
    <message>
        <source>%1 File</source>
        <translation>Berkas %1</translation>
    </message>
    <message>
        <source>Alias</source>
        <translation>Alias</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Pintasan</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>&lt;b&gt;The name "%1" cannot be used.&lt;/b&gt;&lt;p&gt;Try using another name, with fewer characters or no punctuation marks.</source>
        <translation>&lt;b&gt;Nama "%1" tidak dapat digunakan.&lt;/b&gt;&lt;p&gt;Coba nama lain yang lebih pendek atau tanpa tanda baca.</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Komputer</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Tanggal Diubah</translation>
    </message>
    <message>
        <source>Invalid filename</source>
        <translation>Nama berkas tidak sah</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Jenis</translation>
    </message>
    <message>
        <source>My Computer</source>
        <translation>Komputer Saya</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nama</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Ukuran</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Jenis</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Tidak</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ya</translation>
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
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Buka</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Salin</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Tempel</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Ulangi</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Urungkan</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Potong</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Hapus</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Pilih Semua</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Salin</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Tempel</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Ulangi</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Urungkan</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Potong</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Hapus</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Pilih Semua</translation>
    </message>
</context>
<context>
    <name>DefaultFileDialog</name>
    <message>
        <source>Go up to the folder containing this one</source>
        <translation>Ke folder induk</translation>
    </message>
    <message>
        <source>Remove favorite</source>
        <translation>Hapus dari favorit</translation>
    </message>
    <message>
        <source>Add the current directory as a favorite</source>
        <translation>Tambahkan folder ini ke favorit</translation>
    </message>
    <message>
        <source>Filename</source>
        <translation>Nama berkas</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Batal</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Pilih</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Buka</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Simpan</translation>
    </message>
</context>
</TS>
