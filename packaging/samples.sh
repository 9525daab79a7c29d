#!/bin/bash
# samples.sh FOLDER: makes three short clips and two sounds there, unless it holds a movie or a sound already.
# All of them are drawn and sounded here; each clip shows its time, so that one sees two windows in step.
set -euo pipefail
cd "$1"

shopt -s nullglob nocaseglob
present=(*.mp4 *.mov *.m4v *.avi *.mpg *.wmv *.mp3 *.wav *.m4a *.aif *.mid)
((${#present[@]} == 0)) || exit 0
work=$(mktemp -d .samples-XXXXXX) # all of them or none, should this be interrupted
trap 'rm -rf "$work"' EXIT

seconds=20
size=640:360
clock='drawtext=font=IPAGothic:fontsize=40:fontcolor=white:borderw=2:x=24:y=24:text=%{pts\\:hms}'

# make NAME MUXER ARGUMENT...
make() {
    local name=$1 muxer=$2
    shift 2
    ffmpeg -nostdin -v error -y "$@" -t $seconds -fflags +bitexact -flags:v +bitexact -flags:a +bitexact \
        -f "$muxer" "$work/$name"
    echo "$name"
}

tone() { echo "sine=frequency=$1:beep_factor=$2:sample_rate=48000:duration=$seconds,volume=0.4"; }
# A fixed number of threads: with another, the pictures would have other bytes.
picture=(-c:v libx264 -threads 2 -preset veryfast -crf 24 -pix_fmt yuv420p -g 60 -c:a aac -b:a 96k)

# A ball over a slow sunset.
make サンプル１.mp4 mp4 \
    -f lavfi -i "gradients=s=320x180:r=30:nb_colors=3:c0=0x203a72:c1=0xe86f3c:c2=0xf6d55c:speed=0.03:seed=1,scale=$size" \
    -f lavfi -i "color=c=white:s=64x64:r=30,format=yuva420p,geq=lum=235:cb=128:cr=128:a='255*lte(hypot(X-31.5,Y-31.5),31)'" \
    -f lavfi -i "$(tone 262 2)" \
    -filter_complex "[0][1]overlay=x='(W-w)*abs(mod(t/4,2)-1)':y='(H-h)*(1-abs(sin(t*2.2)))',${clock}[v]" \
    -map '[v]' -map 2:a "${picture[@]}"

# Cells that live and die.
make サンプル２.mov mov \
    -f lavfi -i "life=s=160x90:r=15:ratio=0.12:seed=7:mold=12:life_color=0x58d0a0:death_color=0x0b3c49:mold_color=0x0b3c49,scale=$size:flags=neighbor,fps=30" \
    -f lavfi -i "$(tone 330 3)" \
    -vf "$clock" "${picture[@]}"

# A colour wheel.
make サンプル３.m4v mp4 \
    -f lavfi -i "gradients=s=320x180:r=30:type=spiral:nb_colors=4:c0=0x1b1f3b:c1=0x8e3b7e:c2=0xf2a65a:c3=0x2b9a9a:x0=160:y0=90:x1=320:y1=180:speed=0.02:seed=1,scale=$size" \
    -f lavfi -i "$(tone 392 4)" \
    -vf "$clock" "${picture[@]}"

make サンプル音１.wav wav -f lavfi -i "$(tone 440 2)" -c:a pcm_s16le
make サンプル音２.mp3 mp3 -f lavfi -i "$(tone 523 1.5)" -c:a libmp3lame -b:a 96k

mv "$work"/* .
