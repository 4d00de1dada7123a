# Sourced by check-package: drives the installed program with pointer and keys, as an ordinary user would. The program
# runs in the second system below $root, its display and window manager in this one.

screen_width=1366
screen_height=768

start_display() {
    exec {number}<> <(:)
    Xvfb -displayfd "$number" -screen 0 ${screen_width}x${screen_height}x24 -ac -nolisten tcp >"$out/display.log" 2>&1 &
    helpers+=($!)
    read -r -t 20 display <&"$number"
    export DISPLAY=:$display
    openbox >/dev/null 2>&1 &
    helpers+=($!)
}

# start_program COMMAND TITLE: starts it in the second system as the ordinary user, without root's environment, and
# waits for a window with this title.
start_program() {
    chroot --userspec=engineer:engineer "$root" env -i PATH=/usr/bin:/bin HOME=/home/engineer USER=engineer \
        LANG=C.UTF-8 DISPLAY="$DISPLAY" "$1" >"$out/program.log" 2>&1 &
    program=$!
    wait_for window "$2"
    settle
}

# Waits until the program has exited, so that its files are released.
exit_program() {
    xdotool windowactivate --sync "$(frame)"
    keys ctrl+x
    wait_for has_ended
    wait "$program"
    program=
}
frame() { xdotool search --onlyvisible --name '^Ordwick Company Brennoval' | tail -n 1; }
has_ended() { ! kill -0 "$program" 2>/dev/null; }

# has_loaded LIBRARY: whether the program has the library loaded.
has_loaded() { grep -q "$1$" "/proc/$program/maps"; }

wait_for() {
    local tries
    for ((tries = 0; tries < 150; ++tries)); do
        "$@" && return
        sleep .2
    done
    echo "waited in vain for: $*"
    return 1
}
window() { xdotool search --onlyvisible --name "$1" >/dev/null; }

# settle: waits until the display stops changing, apart from the clock in the status bar.
settle() {
    local before='' now still=0 tries
    for ((tries = 0; tries < 100 && still < 2; ++tries)); do
        now=$(import -silent -window root -crop ${screen_width}x$((screen_height - 38))+0+0 +repage rgb:- | cksum)
        if [ "$now" = "$before" ]; then still=$((still + 1)); else still=0; fi
        before=$now
        sleep .1
    done
}
keys() { xdotool key --delay 60 "$@" && settle; }
types() { xdotool type --delay 40 "$1" && settle; }

# click X Y: clicks at a point of the main window.
click() {
    xdotool mousemove --window "$(frame)" "$1" "$2" sleep .2 click 1 && settle
}

# ask SQL: queries the user's data file. is SQL VALUE: whether the query returns that value.
ask() { sqlite3 -readonly "$data/BrennovalUserData.mdb" "$1"; }
is() { [ "$(ask "$1")" = "$2" ] || { echo "$1 says \"$(ask "$1")\", not \"$2\""; return 1; }; }

# A new user's getting-started screens: no prior data, the check box, the ZIP code, the representative.
first_start() {
    keys alt+n
    keys alt+o
    wait_for is 'SELECT FirstTime FROM tblFirstTime' 1
    keys alt+c
    wait_for window '^Waiting'
    types 44114
    keys Return
    keys alt+k
    wait_for is 'SELECT PostalCode FROM tblUser' 44114
}

# Enters a job with an expansion tank for 500 gal of water at 40 to 180 °F and 12 to 30 psig and goes on to its results.
size_a_tank() {
    click 25 46 # New
    types 2026-015
    keys Tab
    types 'Harbor Point'
    keys alt+n
    wait_for is 'SELECT JobDscrptn FROM tblJobHeader' 'Harbor Point'
    click 452 302 # Expansion Tank
    keys Tab
    types 500
    keys Tab Tab Tab # past the estimate and the lowest temperature
    types 180
    keys Tab
    types 12
    keys Tab
    types 30
    keys alt+n
    wait_for is 'SELECT TankID, TotSysVolume, SOTMax, SOPMin, SOPMax FROM tblJobData' '2026-015.1|500.0|180.0|12.0|30.0'
    keys Return # RCB - Top/Bottom System Connection, the first
    keys alt+n
    wait_for is 'SELECT TankClass, RequiredVolume, RequiredAcceptance FROM tblJobData' 'RCB|37.8334|15.2355'
    keys alt+n
    wait_for is 'SELECT ModelNo, Qty FROM tblJobData' 'RCB 200|1'
}

# Previews the submittal and exports it under the suggested name.
export_submittal() {
    keys Return # Preview, which has the focus
    keys alt+f
    keys e
    keys p
    wait_for window '^Save As'
    keys Return
    wait_for test -s "$home/2026-015.1 RCB 200.pdf"
}
