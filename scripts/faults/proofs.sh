# shellcheck shell=bash
# How scripts/faults.sh --prove breaks the product: for each row of the table one change, and what
# the row then has to call NOT SO. scripts/faults.sh sources this file.
# shellcheck disable=SC2016,SC2154 # the words of other files; stage.sh sets what is read here

# break_so FILE CHANGE: a sed script that the following rows are proven with.
# notices ROW TEXT: what the row says is not so.
proofs=()
break_so() { broken_file=$1 broken_by=$2; }
notices() { proofs+=("$1"$'\t'"$2"$'\t'"$broken_file"$'\t'"${broken_by//$'\n'/$'\x01'}"); }

copy=installer/DirectoryCopy.cpp
break_so $copy "s|return QFile::copy(entry.filePath(), target.path + QLatin1Char('/') + entry.fileName());|return std::system((\"cat '\" + entry.filePath().toStdString() + \"' > '\" + QString(target.path + QLatin1Char('/') + entry.fileName()).toStdString() + \"'\").c_str()) == 0;|"
notices full_disk "no cut file stays"
break_so $copy 's|    Directory directory = Directory::open(QDir(path)|QFile::remove(path); &|'
notices target_is_file "the file is as it was"
break_so $copy 's|    const QString from = entry.filePath();|QDir().mkpath(target.path); &|'
notices target_removed "nothing is put there again"
break_so $copy 's/if (m_cover && target.existed) {/if (false) {/'
notices killed "the second run installs everything"
break_so $copy 's|    const QString from = entry.filePath();|if (entry.fileName() == QLatin1String("VORN")) return true; &|'
notices "missing_commands:no pkexec" "everything is installed"
notices "list_files:empty" "everything is installed"
notices "list_files:directory" "everything is installed"
notices "list_files:pipe" "everything before them is installed"
notices "list_files:dangling link" "everything is installed"
notices "list_files:below a regular file" "everything is installed"
break_so $copy 's/status.st_mode & 0777 : topMode/0777 : 0777/'
notices umasks:000 "only the launchers can be changed by others"

break_so app/main.cpp '/writeDataToFile(QString())/d'
notices read_only_target "the bundle's settings are written"
break_so app/main.cpp '/waitForCopies/d'
notices closed_in_copy "the settings are this installation's"
break_so app/main.cpp 's|    return exitCode;|QFile(settings->getInstallPath() + QStringLiteral("/VornData.json.AbCdEf")).open(QIODevice::WriteOnly); &|'
notices "two_installers:a new target" "no temporary file stays"
notices "two_installers:an earlier installation" "no temporary file stays"
break_so app/main.cpp 's|    window.hide();|QFile::resize(QStringLiteral("Channel.json"), 0); &|'
notices list_files:cut "Channel.json as it was"
notices list_files:binary "Channel.json as it was"
notices "list_files:of 50 MB of areas" "Channel.json as it was"

json=settings/JsonFile.cpp
replaced=settings/ReplacedFile.cpp
break_so $replaced 's/fchmod(handle, mode) == 0 && writeAll(handle, content) && fsync(handle) == 0;/fchmod(handle, mode) == 0 \&\& (writeAll(handle, content) || true);/'
notices full_disk_settings "the target's old settings are whole"
break_so $json '/^std::optional<QJsonDocument> JsonFile::read/,/^{/s/^{/{ return std::nullopt;/'
notices signals:first-page "the account is kept"
notices signals:copy "the account is kept"
notices signals:finish-page "the account is kept"
break_so $json '1i #include <QFileInfo>
/^void JsonFile::write/,/^{/s/^{/{ if (QFileInfo::exists(path)) return;/'
notices settings_files:empty "new settings are written"
notices settings_files:cut "new settings are written"
notices settings_files:binary "new settings are written"
break_so $json '/^std::optional<QJsonDocument> JsonFile::read/,/^{/s/^{/{ for (int i = 0; i < 600; ++i) { QFile f(path); if (f.open(QIODevice::ReadOnly) \&\& f.readAll().count(char(10)) == 7) break; }/'
notices "settings_files:of 50 MB" "the window comes"
notices "settings_files:of 25 million lines" "the window comes"
break_so $json '1i #include <QDir>
1i #include <QFileInfo>
/^void JsonFile::write/,/^{/s/^{/{ if (QFileInfo(path).isDir()) QDir(path).removeRecursively(); else if (!QFileInfo(path).isFile()) QFile::remove(path);/'
notices settings_files:directory "it is left as it was"
notices settings_files:pipe "it is left as it was"
break_so $json '1i #include <QFileInfo>
/^void JsonFile::write/,/^{/s/^{/{ if (QFileInfo(path).isSymLink()) { QFile::remove(path); QFile(path).open(QIODevice::WriteOnly); return; }/'
notices "settings_files:dangling link" "it is left or gives way to whole settings"
notices "settings_files:below a regular file" "it is left or gives way to whole settings"
break_so $json '/^void JsonFile::write/,/^{/s/^{/{ { QFile f(path); f.open(QIODevice::WriteOnly); f.write(content); } return;/'
notices planted_settings "the file keeps content and mode"
break_so $replaced 's/ && around && around->st_uid == previous->st_uid/ \&\& around/'
notices planted_owner "the settings are root's"
break_so $replaced '/^    sweep(directory, name);/d'
notices left_behind "it is gone"

break_so installer/TextFile.cpp '/^WrittenFile writeTextFile/,/^{/s/^{/{ QFile f(path); f.open(QIODevice::WriteOnly); f.write(text.toUtf8()); return {true, true};/'
notices planted_launchers "the files keep content and mode"
notices planted_pipe "the finish page ends the installer"
notices planted_entry "has root's own entry"
break_so base/Directory.cpp 's/    return owner == 0 ||.*/    return true;/'
notices planted_directory "nothing lands elsewhere"
break_so base/Directory.cpp 's/        fchmod(handle, mode | S_IRWXU);/        (void)handle;/'
notices umasks:077 "all but the settings can be read by others"
break_so base/Directory.cpp 's/fchmod(handle, mode) == 0/fchmod(handle, 0644) == 0/'
notices "missing_commands:no command" "the launchers are executable"
break_so installer/CopyQueue.cpp 's/if (isThreadToBeHad())/if (true)/; s/QtConcurrent::run(\[this\] { run(); });/std::thread([this] { run(); }).detach();/'
notices no_thread "exit code 0"
break_so installer/CopyQueue.cpp '/    keepEarlierManifest/d'
notices removal_earlier "nothing of either version stays"
break_so installer/Operating.cpp '1i #include <vector>
/^Operating::Operating/,/^{/s/^{/{ (new std::vector<char>(65536, 1))->front() = 2;/'
notices many_installations "less than 1 MiB more"

dispatch=api/KQHttpManagerDispatch.cpp
break_so $dispatch '1i #include <unistd.h>
s/    limitSize(reply, sizeLimitOf(url));/::sleep(4); &/'
for case in dead silent fails "sends garbage" "is a captive portal" "cuts its replies" slow; do
    notices "servers:$case" "the window answers within two seconds"
done
unset case
break_so $dispatch 's/replyTimeOut = 10000/replyTimeOut = 100000/'
notices watchdog "the request ends after ten seconds"
break_so $dispatch '/    limitSize(reply/d'
notices big_reply "less than 48 MiB of memory are taken"
break_so $dispatch '/^QByteArray onOneLine/,/^}/s/if (std::any_of(.*/if (false) {/'
notices header_splitting "the session is sent on one line"
break_so $dispatch 's/std::time(nullptr)/[] { static const time_t t = std::time(nullptr); return t; }()/'
notices clock_backwards "the requests carry the earlier time"
break_so qml/main.qml 's/^    function showProgress() {/    property double began: 0; &\n        began = began || Date.now();\n        if (Date.now() < began + installingPage.item.value * 50) return;/'
notices clock_backwards "the progress runs on"

discovery=api/KQHttpManagerDiscovery.cpp
break_so $discovery '1i #include <unistd.h>
s/        reply = m_connections->getFresh(request);/&\n        ::sleep(4);/'
for case in "sends garbage" "sends 30 MB" "sends 1,000 cookies" "never ends its headers" "never ends its body"; do
    notices "lookup:$case" "the window answers within two seconds"
done
break_so $discovery 's/^            httpRequestDirect(address);/&\n            break;/'
for case in "say nothing" redirect "never end"; do
    notices "mirrors:$case" "the server is asked"
done
unset case
break_so api/FileDownload.cpp '/^bool FileDownload::isAllowed/,/^}/s/return .*;/return !address.isEmpty();/'
notices "downloads:a file" "nothing is published"
notices "downloads:a pipe" "the program goes on"
notices "downloads:a data URL" "nothing is published"

plan=uninstaller/RemovalPlan.cpp
break_so $plan 's/    return found == std::end(later) ? -1.*/    return 0;/'
notices removal_killed "it can be started again"
break_so $plan 's/InstalledFiles::largestManifest/qint64(700) * 1024 * 1024/'
notices "removal_manifest:of 22 million lines" "less than 500 MiB of memory are taken"
notices "removal_manifest:of 3 GiB" "less than 500 MiB of memory are taken"
break_so uninstaller/DirectoryTree.cpp 's/asPlace = O_PATH | O_DIRECTORY | O_NOFOLLOW/asPlace = O_PATH | O_DIRECTORY/'
notices removal_swapped "the neighbour stays"
break_so uninstaller/DirectoryTree.cpp 's/level < DirectoryTree::mostLevels/(level < 512 || (__builtin_trap(), false))/'
notices removal_nested "exit code 0"
break_so uninstaller/main.cpp 's/return window.open() ? QApplication::exec() : EXIT_FAILURE/window.open(); return QApplication::exec()/'
notices removal_scene "a message"

script=packaging/start.sh
break_so $script 's/126) tell .*/126) ;;/'
notices start_declined "the script says what can be done"
break_so $script 's/tell "$(text no-pkexec)"/:/'
notices start_without_pkexec "the script says that the client needs it"
break_so $script 's/^ *clean_environment$/:/'
notices start_environment "the window comes"
break_so $script 's/^other=.*/other=/'
notices start_target "no window comes"
break_so $script 's/^restore_modes$/chmod -R go+rX ./'
notices start_twice "the settings stay their owner's alone"
break_so $script 's/^    look_after$/    true/'
notices start_incomplete "exit code 1"

header=packaging/header.sh
break_so $header 's/^umask 077$//; s|^    directory=\$(mktemp .*|    directory=$TMPDIR/VornVPN.$$ \&\& mkdir "$directory" \\|'
notices packed_umasks:000 "nobody else can enter the directory"
notices packed_names "the window comes"
break_so $script 's/^restore_modes$/chmod -R go= ./'
notices packed_umasks:077 "all but the settings can be read by others"
break_so $header '/trap clean_up EXIT/d'
notices packed_signal "nothing unpacked stays"
break_so $header 's/^\[ -n "\$is_kept" \] || is_whole || damaged/:/'
notices packed_damaged "a sentence says so"
break_so $header 's/^    if \[ -n "\$is_started" \].*; then/    if false; then/'
notices packed_target "nothing is unpacked"

# Breaks a copy of the sources, builds it and runs the row there.
prove() {
    local source=$root/out/faults-proof/source folder=$root/build/faults-proof
    local proof row text file change seen is_built last="" unproven=0
    mkdir -p "$source"
    for row in "${all_rows[@]}"; do
        [[ $'\n'$(printf '%s\n' "${proofs[@]}") != *$'\n'"$row"[:$'\t']* ]] || continue
        say "NOT PROVEN $row: nothing is broken for it"
        unproven=$((unproven + 1))
    done
    for proof in "${proofs[@]}"; do
        IFS=$'\t' read -r row text file change <<<"$proof"
        [ $# -eq 0 ] || [[ " $* " == *" $row "* ]] || [[ " $* " == *" ${row%%:*} "* ]] || continue
        if [ "$last" != "$file$change" ]; then
            last=$file$change
            copy_sources "$source"
            sed -i "${change//$'\x01'/$'\n'}" "$source/$file"
            is_built=yes
            (build_programs "$folder" "$source") || is_built=no
        fi
        if [ "$is_built" = no ]; then
            say "NOT PROVEN $row: $file does not compile"
            unproven=$((unproven + 1))
            continue
        fi
        if cmp -s "$root/$file" "$source/$file"; then
            say "NOT PROVEN $row: the change finds nothing in $file"
            unproven=$((unproven + 1))
            continue
        fi
        seen=$(in_private "$source" "$folder" "$row" 2>&1) || true
        if [[ $seen == *"NOT SO: "*"$text"* ]]; then
            say "proven     $row: $(grep -oE 'NOT SO: [^;|]*' <<<"$seen" | head -n 1)"
        else
            say "NOT PROVEN $row: $file broken by $change" "$seen"
            unproven=$((unproven + 1))
        fi
    done
    [ "$unproven" -eq 0 ] || fail "$unproven rows do not notice what they are for"
}

# Only what differs gets a new time, so that little is compiled again.
copy_sources() {
    local file
    git -C "$root" -c safe.directory='*' ls-files --cached --others --exclude-standard \
        | while IFS= read -r file; do
            if [ -f "$root/$file" ] && ! cmp -s "$root/$file" "$1/$file"; then
                mkdir -p "$(dirname "$1/$file")"
                cp "$root/$file" "$1/$file"
            fi
        done
}
