#!/usr/bin/env bash
# What a shell offers for the microphones' shortcut: one after the other, then word of it.
set -euo pipefail

mute=$1
pactl list short sources | while read -r _ name _; do
    [[ $name == *.monitor ]] || pactl set-source-mute "$name" "$mute"
done
notify-send --expire-time=1000 "Microphones" "$([[ $mute == 1 ]] && echo muted || echo on)"
