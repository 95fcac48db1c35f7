#!/usr/bin/env bash
# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# usage: draw-phones.sh
# Draws the icons of the preset orientations, dark ones for light themes and light ones ("_light") for dark themes. Run
# it where ImageMagick is, as in "./dev shell", after a change of the drawings below.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# ImageMagick's name of its program depends on its version.
magick=$(command -v magick || command -v convert)

# On a canvas of 64 by 64 with the origin in its centre, each phone with the earpiece at its top and the button below.
upright='
fill-opacity 0  stroke-width 4  roundRectangle -17,-29 17,29 6,6
fill-opacity 0.22  stroke-opacity 0  rectangle -11.5,-18 11.5,17
stroke-opacity 1  stroke-width 3  line -4,-23 4,-23
fill-opacity 1  stroke-opacity 0  circle 0,22.2 0,25.2'

# Flat on a table, seen from the side of the table at which the button is: the screen.
face_up='
fill-opacity 0  stroke-width 4  stroke-linejoin round
path "M -12,-19 L 12,-19 Q 16,-19 17.5,-15 L 27.5,10 Q 29,14 24.5,14 L -24.5,14 Q -29,14 -27.5,10 L -17.5,-15 Q -16,-19 -12,-19 Z"
path "M -28,12 L -28,16 Q -28,20 -24,20 L 24,20 Q 28,20 28,16 L 28,12"
fill-opacity 0.22  stroke-opacity 0  path "M -12,-10.5 L 12,-10.5 L 17.5,4.5 L -17.5,4.5 Z"
stroke-opacity 1  stroke-width 2.5  line -3.5,-14.6 3.5,-14.6
fill-opacity 1  stroke-opacity 0  ellipse 0,8.6 3.6,2 0,360'

# The same table with the top of the phone on this side: its back with the lens of the camera and the flash.
face_down='
fill-opacity 0.22  stroke-width 4  stroke-linejoin round
path "M -12,-19 L 12,-19 Q 16,-19 17.5,-15 L 27.5,10 Q 29,14 24.5,14 L -24.5,14 Q -29,14 -27.5,10 L -17.5,-15 Q -16,-19 -12,-19 Z"
fill-opacity 0
path "M -28,12 L -28,16 Q -28,20 -24,20 L 24,20 Q 28,20 28,16 L 28,12"
stroke-width 2.5  ellipse 13.6,3.4 5.4,3.8 0,360
fill-opacity 1  stroke-opacity 0  ellipse 3,3.4 2,1.5 0,360'

# draw NUMBER DRAWING [DEGREES]: turned clockwise.
draw() {
    local suffix color
    for suffix in '' _light; do
        if [[ $suffix ]]; then color='#dadada'; else color='#404244'; fi
        # Drawn large, for smoother edges than ImageMagick's own, and without a time of writing: the same drawing is the
        # same file.
        "$magick" -size 1024x1024 xc:none \
            -draw "scale 16,16 translate 32,32 rotate ${3:-0} fill $color stroke $color stroke-linecap round $2" \
            -resize 64x64 -strip -define png:exclude-chunks=date,time "PNG32:phone_$1$suffix.png"
    done
}

draw 1 "$upright"
draw 2 "$upright" 90
draw 3 "$upright" 180
draw 4 "$upright" -90
draw 5 "$face_up"
draw 6 "$face_down"
