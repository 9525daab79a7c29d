#!/bin/bash
# clips.sh FOLDER [long]: makes the clips of the measurements, each once; with "long" also the one of ten minutes.
#
# stage.mp4 is 20 s of 1080p30 H.264 with AAC and a key frame each second, small.mp4 a short one of few pixels,
# sound/1.m4a a minute of noise. The rest carry numbers: the picture is 8 rows of 20 blocks, a column a bit, white for
# a set one, the lowest at the left: 4 bits of clip, 16 of frame; every second row is turned over. A moving test
# picture shines through.
set -euo pipefail
mkdir -p "$1"/{show,seek,long,sound}
cd "$1"

# encode NAME RATE SECONDS PRESET GRAPH
encode() {
    [[ -e $1.mp4 ]] && return
    ffmpeg -nostdin -v error -y -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=$3" \
        -filter_complex "$5" -map '[picture]' -map 0:a -t "$3" \
        -c:v libx264 -preset "$4" -g "$2" -pix_fmt yuv420p -c:a aac "$1.part.mp4"
    mv "$1.part.mp4" "$1.mp4"
}

# numbered NAME NUMBER SIZE RATE SECONDS [PRESET [NOISE]]; the noise makes it as hard to decode as a real movie.
numbered() {
    local bit="mod(floor(($2+16*N)/pow(2,X)),2)"
    encode "$1" "$4" "$5" "${6:-veryfast}" "
        color=size=20x8:rate=$4,format=gray,geq=lum='if(mod($bit+Y,2),255,0)',
            scale=$3:flags=neighbor,format=yuv420p[code];
        testsrc2=size=$3:rate=$4,format=yuv420p,noise=c0s=${7:-20}:allf=t[moving];
        [moving][code]mix=inputs=2:weights='1 3'[picture]"
}

encode stage 30 20 veryfast "testsrc2=size=1920x1080:rate=30:duration=20[picture]"
encode small 30 3 veryfast "testsrc2=size=320x240:rate=30:duration=3[picture]"

# Music under the movie.
if [[ ! -e sound/1.m4a ]]; then
    ffmpeg -nostdin -v error -y -f lavfi -i "anoisesrc=color=pink:sample_rate=44100:duration=60" -ac 2 -c:a aac \
        sound/1.part.m4a
    mv sound/1.part.m4a sound/1.m4a
fi

# One after the other on stage: other sizes and frame rates.
numbered show/1 1 1920x1080 30 3
numbered show/2 2 1280x720 25 3
numbered show/3 3 640x480 24 3
numbered show/4 4 960x540 50 3
numbered show/5 5 320x240 15 3

numbered seek/1 6 1920x1080 30 60
if [[ ${2:-} == long ]]; then
    numbered long/1 7 1920x1080 30 630 ultrafast 0
fi
