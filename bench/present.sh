#!/usr/bin/env bash
# Presentation mode by hand, for XFCE: what someone writes who knows wmctrl, xdotool and xfconf-query.
# bench/run lets TavroPRO race against it.
#   present.sh on|off
# on:  hides the desktop icons, minimises the windows of all applications but the active one's
# off: puts back what it changed: icons, windows in their order, focus
# With PRESENT_DND=1 it also switches the notification server to Do Not Disturb, with PRESENT_MUTE=1 it also
# mutes the speaker.
set -euo pipefail

state=${XDG_RUNTIME_DIR:-/tmp}/present.state

# Each setting is a channel, a property and the value for a presentation; the former value goes to a file.
settings=(icons)
declare -A setting=(
    [icons]="xfce4-desktop /desktop-icons/style int 0"
    [dnd]="xfce4-notifyd /do-not-disturb bool true"
)
declare -A usual=([icons]=2 [dnd]=false)
[[ ! ${PRESENT_DND-} ]] || settings+=(dnd)

change_setting() {
    local channel property type value former
    read -r channel property type value <<<"${setting[$1]}"
    former=$(xfconf-query -c "$channel" -p "$property" 2>/dev/null) || former=${usual[$1]}
    echo "$former" >"$state.$1"
    xfconf-query -c "$channel" -p "$property" -n -t "$type" -s "$value"
}

restore_setting() {
    local channel property type value
    read -r channel property type value <<<"${setting[$1]}"
    xfconf-query -c "$channel" -p "$property" -s "$(<"$state.$1")"
}

change_speaker() {
    pactl get-sink-mute @DEFAULT_SINK@ >"$state.mute"
    pactl set-sink-mute @DEFAULT_SINK@ 1
}

restore_speaker() {
    grep -q yes "$state.mute" || pactl set-sink-mute @DEFAULT_SINK@ 0
}

# The three questions are asked at once. wmctrl knows classes, xdotool what is not minimised (in one process,
# where xprop would need one for each window), xprop the stacking order.
hide_windows() {
    local active kept id class visible list root word last=
    local -a stacking windows=() minimise=()
    local -A class_of=() is_visible=()
    exec {list}< <(wmctrl -lx) {visible}< <(xdotool search --onlyvisible --name .) \
        {root}< <(xprop -root _NET_ACTIVE_WINDOW _NET_CLIENT_LIST_STACKING)
    while read -r id _ class _; do
        class_of[$((id))]=${class##*.}
    done <&"$list"
    read -r word word word word active word <&"$root"
    read -r -a stacking <&"$root"
    active=$((${active%,}))
    kept=${class_of[$active]-}
    while read -r id; do
        is_visible[$id]=yes
    done <&"$visible"
    for id in "${stacking[@]}"; do
        [[ $id == 0x* ]] || continue
        id=$((${id%,}))
        [[ ${is_visible[$id]-} ]] || continue
        case ${class_of[$id]-} in
            "" | Xfce4-panel | Xfdesktop) ;;
            "$kept") windows+=(windowraise "$id") ;;
            *) last=${#windows[@]} windows+=(windowactivate "$id") minimise+=(windowminimize "$id") ;;
        esac
    done
    # xfwm4 leaves the focus to the last that came back unless it is waited for.
    [[ ! $last ]] || windows[last]+=" --sync"
    echo "${windows[@]}" windowactivate --sync "$active" >"$state.windows"
    ((${#minimise[@]} == 0)) || xdotool "${minimise[@]}"
}

# From the bottom to the top, which gives the former order.
show_windows() {
    local -a windows
    read -r -a windows <"$state.windows"
    xdotool "${windows[@]}"
}

present() {
    local name
    for name in "${settings[@]}"; do
        "$1_setting" "$name" &
    done
    [[ ! ${PRESENT_MUTE-} ]] || "$1_speaker" &
    "$2_windows"
    wait
}

case ${1-} in
    on) present change hide ;;
    off) present restore show ;;
    *) echo "usage: present.sh on|off" >&2 && exit 2 ;;
esac
