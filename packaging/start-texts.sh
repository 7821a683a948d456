# shellcheck shell=sh
# What start.sh tells, in the languages of the scene. The first words of each line name the text.

# Where nothing else shows a window; it has no Chinese letters.
only_xmessage() {
    ! [ -t 2 ] && ! command -v zenity && ! command -v kdialog && command -v xmessage
} >/dev/null

# The language of the session, as far as its characters can be shown.
find_language() {
    language=en
    locale=${LC_ALL:-${LC_MESSAGES:-${LANG-}}}
    case $locale in
        *[Uu][Tt][Ff]8* | *[Uu][Tt][Ff]-8*) ;;
        *) [ "$(locale charmap 2>/dev/null)" = UTF-8 ] || return 0 ;;
    esac
    case $locale in
        zh*) ! only_xmessage || return 0; language=zh ;;
        id* | in_*) language=id ;;
        ru*) language=ru ;;
        de*) language=de ;;
    esac
}

# text NAME VALUE...
text() {
    format=
    while read -r its_language its_name its_text; do
        case "$its_language $its_name" in
            "$language $1") format=$its_text && break ;;
        esac
    done <<'TEXTS'
en no-session VornVPN is installed in a window: start it from a graphical session.
en machine VornVPN needs a 64-bit PC (x86_64), and this computer is of the kind %s.
en glibc VornVPN needs the C library glibc %s or later, and this system has %s.
en other-libc VornVPN needs the C library glibc %s or later, and this system has another one.
en noexec The directory %s does not allow programs to be run: set TMPDIR to a directory that does and start again.
en libgl The graphics library libGL.so.1 is missing: install the package libgl1 (libglvnd-glx, mesa-libGL) and start again.
en libraries These libraries of the system are missing: %s.
en full The disk of %s is full: set TMPDIR to a directory with room and start again.
en room VornVPN needs %s MB, and /opt has only %s MB left: choose another directory.
en others The directory %s holds files that are not VornVPN's (%s), and they would be installed, too: unpack VornInstall.run into an empty directory.
en no-pkexec pkexec is missing, so that nobody can be asked for administrator rights: choose a directory of your own; the client itself needs pkexec to start.
en declined Administrator rights were not given: choose a directory of your own; the client itself needs pkexec to start.
en not-asked The question for administrator rights could not be asked: choose a directory of your own; the client itself needs pkexec to start.
en lack The installation is not complete: %s of %s files are missing in %s.
en lack-rights The installation is not complete: %s of %s files are missing in %s, where you may not write.
en lack-room The installation is not complete: %s of %s files are missing in %s, where the disk is full.
de no-session VornVPN wird in einem Fenster installiert: Starten Sie es in einer grafischen Sitzung.
de machine VornVPN braucht einen 64-Bit-PC (x86_64), und dieser Rechner ist von der Art %s.
de glibc VornVPN braucht die C-Bibliothek glibc %s oder neuer, und dieses System hat %s.
de other-libc VornVPN braucht die C-Bibliothek glibc %s oder neuer, und dieses System hat eine andere.
de noexec Im Verzeichnis %s dürfen keine Programme laufen: Setzen Sie TMPDIR auf ein Verzeichnis, in dem sie es dürfen, und starten Sie erneut.
de libgl Die Grafikbibliothek libGL.so.1 fehlt: Installieren Sie das Paket libgl1 (libglvnd-glx, mesa-libGL) und starten Sie erneut.
de libraries Diese Bibliotheken des Systems fehlen: %s.
de full Der Datenträger von %s ist voll: Setzen Sie TMPDIR auf ein Verzeichnis mit freiem Platz und starten Sie erneut.
de room VornVPN braucht %s MB, und in /opt sind nur %s MB frei: Wählen Sie ein anderes Verzeichnis.
de others Im Verzeichnis %s liegen Dateien, die nicht zu VornVPN gehören (%s) und mit installiert würden: Entpacken Sie VornInstall.run in ein leeres Verzeichnis.
de no-pkexec pkexec fehlt, sodass niemand nach Administratorrechten gefragt werden kann: Wählen Sie ein eigenes Verzeichnis; das Programm selbst braucht pkexec zum Starten.
de declined Administratorrechte wurden nicht erteilt: Wählen Sie ein eigenes Verzeichnis; das Programm selbst braucht pkexec zum Starten.
de not-asked Die Frage nach Administratorrechten konnte nicht gestellt werden: Wählen Sie ein eigenes Verzeichnis; das Programm selbst braucht pkexec zum Starten.
de lack Die Installation ist nicht vollständig: %s von %s Dateien fehlen in %s.
de lack-rights Die Installation ist nicht vollständig: %s von %s Dateien fehlen in %s, wo Sie nicht schreiben dürfen.
de lack-room Die Installation ist nicht vollständig: %s von %s Dateien fehlen in %s, weil der Datenträger voll ist.
id no-session VornVPN dipasang melalui jendela: jalankan dari sesi grafis.
id machine VornVPN memerlukan PC 64-bit (x86_64), sedangkan komputer ini berjenis %s.
id glibc VornVPN memerlukan pustaka C glibc %s atau yang lebih baru, sedangkan sistem ini memiliki %s.
id other-libc VornVPN memerlukan pustaka C glibc %s atau yang lebih baru, sedangkan sistem ini memiliki pustaka lain.
id noexec Direktori %s tidak mengizinkan program dijalankan: atur TMPDIR ke direktori yang mengizinkannya, lalu mulai lagi.
id libgl Pustaka grafis libGL.so.1 tidak ada: pasang paket libgl1 (libglvnd-glx, mesa-libGL), lalu mulai lagi.
id libraries Pustaka sistem berikut tidak ada: %s.
id full Disk untuk %s penuh: atur TMPDIR ke direktori yang masih memiliki ruang, lalu mulai lagi.
id room VornVPN memerlukan %s MB, sedangkan di /opt hanya tersisa %s MB: pilih direktori lain.
id others Direktori %s berisi berkas yang bukan milik VornVPN (%s) dan akan ikut terpasang: ekstrak VornInstall.run ke direktori kosong.
id no-pkexec pkexec tidak ada, sehingga hak administrator tidak dapat diminta: pilih direktori milik Anda sendiri; klien memerlukan pkexec untuk dijalankan.
id declined Hak administrator tidak diberikan: pilih direktori milik Anda sendiri; klien memerlukan pkexec untuk dijalankan.
id not-asked Permintaan hak administrator tidak dapat ditampilkan: pilih direktori milik Anda sendiri; klien memerlukan pkexec untuk dijalankan.
id lack Pemasangan tidak lengkap: %s dari %s berkas tidak ada di %s.
id lack-rights Pemasangan tidak lengkap: %s dari %s berkas tidak ada di %s karena Anda tidak boleh menulis di sana.
id lack-room Pemasangan tidak lengkap: %s dari %s berkas tidak ada di %s karena disk penuh.
ru no-session VornVPN устанавливается в окне: запустите его в графическом сеансе.
ru machine Для VornVPN нужен 64-разрядный ПК (x86_64), а тип этого компьютера — %s.
ru glibc Для VornVPN нужна библиотека C glibc %s или новее, а в этой системе %s.
ru other-libc Для VornVPN нужна библиотека C glibc %s или новее, а в этой системе другая.
ru noexec В каталоге %s запрещён запуск программ: укажите в TMPDIR каталог, где он разрешён, и запустите снова.
ru libgl Нет графической библиотеки libGL.so.1: установите пакет libgl1 (libglvnd-glx, mesa-libGL) и запустите снова.
ru libraries В системе нет библиотек: %s.
ru full Диск каталога %s заполнен: укажите в TMPDIR каталог со свободным местом и запустите снова.
ru room Для VornVPN нужно %s МБ, а в /opt осталось только %s МБ: выберите другой каталог.
ru others В каталоге %s есть файлы, которые не относятся к VornVPN (%s), и они тоже были бы установлены: распакуйте VornInstall.run в пустой каталог.
ru no-pkexec Нет программы pkexec, поэтому права администратора запросить нельзя: выберите собственный каталог; для запуска самого клиента нужен pkexec.
ru declined Права администратора не предоставлены: выберите собственный каталог; для запуска самого клиента нужен pkexec.
ru not-asked Не удалось запросить права администратора: выберите собственный каталог; для запуска самого клиента нужен pkexec.
ru lack Установка неполная: не хватает файлов (%s из %s) в каталоге %s.
ru lack-rights Установка неполная: не хватает файлов (%s из %s) в каталоге %s, запись в который вам запрещена.
ru lack-room Установка неполная: не хватает файлов (%s из %s) в каталоге %s, так как диск заполнен.
zh no-session VornVPN 以視窗安裝：請在圖形工作階段中啟動。
zh machine VornVPN 需要 64 位元電腦 (x86_64)，而這部電腦的類型是 %s。
zh glibc VornVPN 需要 C 函式庫 glibc %s 或更新版本，而此系統的版本是 %s。
zh other-libc VornVPN 需要 C 函式庫 glibc %s 或更新版本，而此系統使用其他函式庫。
zh noexec 目錄 %s 不允許執行程式：請將 TMPDIR 設為允許執行的目錄，然後重新啟動。
zh libgl 缺少圖形函式庫 libGL.so.1：請安裝套件 libgl1 (libglvnd-glx, mesa-libGL)，然後重新啟動。
zh libraries 系統缺少這些函式庫：%s。
zh full %s 所在的磁碟已滿：請將 TMPDIR 設為有空間的目錄，然後重新啟動。
zh room VornVPN 需要 %s MB，而 /opt 只剩 %s MB：請選擇其他目錄。
zh others 目錄 %s 含有不屬於 VornVPN 的檔案 (%s)，它們也會被安裝：請將 VornInstall.run 解壓縮到空目錄。
zh no-pkexec 系統沒有 pkexec，無法要求管理員權限：請選擇您自己的目錄；用戶端本身需要 pkexec 才能啟動。
zh declined 未取得管理員權限：請選擇您自己的目錄；用戶端本身需要 pkexec 才能啟動。
zh not-asked 無法要求管理員權限：請選擇您自己的目錄；用戶端本身需要 pkexec 才能啟動。
zh lack 安裝不完整：共缺少 %s 個檔案（總數 %s），位置是 %s。
zh lack-rights 安裝不完整：共缺少 %s 個檔案（總數 %s），因為您無法寫入 %s。
zh lack-room 安裝不完整：共缺少 %s 個檔案（總數 %s），因為 %s 的磁碟已滿。
TEXTS
    shift
    # shellcheck disable=SC2059 # the format is one of those above
    printf "$format" "$@"
}

# Breaks lines after so many columns: at blanks, and anywhere between Chinese characters. It counts
# bytes itself, since not every awk and no fold knows more than bytes.
fold_text() {
    printf '%s\n' "$1" | LC_ALL=C awk -v width=64 '
        function end_line() { print line; line = rest; columns = rest_columns; rest = ""; rest_columns = 0 }
        {
            line = rest = ""; columns = rest_columns = 0 # the rest stands behind the last place to break
            for (i = 1; i <= length($0); i++) {
                byte = substr($0, i, 1)
                its_columns = byte ~ /[\200-\277]/ ? 0 : byte ~ /[\340-\357]/ ? 2 : 1
                if (columns + rest_columns + its_columns > width && line != "") end_line()
                if (byte == " " || its_columns == 2) { line = line rest; columns += rest_columns; rest = ""; rest_columns = 0 }
                rest = rest byte; rest_columns += its_columns
            }
            print line rest
        }' | sed 's/^ //'
}
