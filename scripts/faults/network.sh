# shellcheck shell=bash
# Rows of the fault table: servers. scripts/faults.sh sources this file.
# shellcheck disable=SC2034,SC2154 # stage.sh reads what is set here, and sets what is read here

servers() {
    local name rule
    while IFS='|' read -r name rule; do
        wanted "$name" || continue
        begin "server $name" "every path: ${rule:-no server}"
        if [ -n "$rule" ]; then rules "{\"*\": $rule}"; else stop "$server_pid"; fi
        start
        quick_install
        expect "the window answers within two seconds" test "$answer_ms" -lt 2000
        try_it_now
        expect "everything is installed" complete
        expect "the settings are whole" is_settings "$settings"
        expect "the client starts" wait_until 10 test -s "$marker"
        end
    done <<'END'
dead|
silent|{"silent": true}
fails|{"status": 500}
sends garbage|{"garbage": 100000}
is a captive portal|{"text": "<html><body>Please log in</body></html>"}
cuts its replies|{"cut": true}
slow|{"delay": 3}
END
    tell
}

watchdog() {
    begin "server that takes requests and never answers" '/api/system/region: {"silent": true}; waited for'
    rules '{"/api/system/region": {"silent": true}}'
    start
    wait_until 20 asked '"path": "/api/system/region"' || give_up "the region is asked"
    expect "the request ends after ten seconds" wait_until 14 grep -F "请求超时" "$work/installer.log"
    quick_install
    try_it_now
    expect "everything is installed" complete
    end
    tell
}

# A lookup's answer is a stranger's: the machine asks whoever is named at build time.
lookup() {
    local name rule
    while IFS='|' read -r name rule; do
        wanted "$name" || continue
        begin "lookup that $name" "/lookup: $rule"
        rules "{\"/lookup\": $rule}"
        start
        quick_install
        expect "the window answers within two seconds" test "$answer_ms" -lt 2000
        try_it_now
        expect "everything is installed" complete
        expect "the report of the start is signed well" asked '["flag", "start"]'
        end
    done <<'END'
sends garbage|{"garbage": 300000}
sends 30 MB|{"size": 30000000}
sends 1,000 cookies|{"cookies": 1000}
never ends its headers|{"endless": "headers"}
never ends its body|{"endless": "body"}
END
    tell
}

mirrors() {
    local name rule
    while IFS='|' read -r name rule; do
        wanted "$name" || continue
        begin "three mirrors that $name" "the fourth answers; each path: $rule"
        rules "{\"/us/cookie.txt\": $rule, \"/eu/cookie.txt\": $rule, \"/ca/cookie.txt\": $rule}"
        start
        expect "the server is asked" wait_until 20 asked '"path": "/api/system/index"'
        quick_install
        try_it_now
        expect "everything is installed" complete
        expect "the report of the start is signed well" asked '["flag", "start"]'
        end
    done <<'END'
say nothing|{"silent": true}
redirect|{"status": 302}
never end|{"endless": "body"}
END
    tell
}

peak_memory() { awk '/^VmHWM/ { print $2 }' "/proc/$pid/status"; }

big_reply() {
    local before after
    begin "reply of 30 MB" '/api/system/region: {"size": 30000000}'
    rules '{"/api/system/region": {"size": 30000000}}'
    start
    before=$(peak_memory)
    wait_until 20 asked '"path": "/api/system/region"' || give_up "the region is asked"
    sleep 2
    after=$(peak_memory)
    expect "less than 48 MiB of memory are taken" test $((after - before)) -lt $((48 * 1024))
    quick_install
    expect "the window answers within two seconds" test "$answer_ms" -lt 2000
    try_it_now
    expect "everything is installed" complete
    end
    tell
}

# The client's updater takes the address of its download from a reply.
downloads() {
    local name address directory
    while IFS='|' read -r name address; do
        wanted "$name" || continue
        begin "download from $name" "tools/fault-driver.cpp: $address"
        directory=$work/victims/download
        mkdir "$directory"
        printf 'secret\n' >"$work/victims/secret" && chmod 600 "$work/victims/secret"
        mkfifo "$work/victims/pipe"
        result=0
        (cd "$directory" && QT_QPA_PLATFORM=offscreen timeout 30 "$build/tools/vorn-fault-driver" download \
            "${address//VICTIMS/$work/victims}") >"$work/driver.txt" 2>"$work/driver.log" || result=$?
        expect "the program goes on" test "$result" -eq 0
        expect "nothing is published" not grep -rs secret "$directory"
        end
    done <<'END'
a file|file://VICTIMS/secret
a pipe|file://VICTIMS/pipe
a data URL|data:text/plain,secret
END
    tell
}
