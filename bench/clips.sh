#!/bin/bash
# clips.sh FOLDER [long]: makes the clips of the measurements, each once; with "long" also the one of ten minutes.
#
# stage.mp4 is 20 s of 1080p30 H.264 with AAC and a key frame each second, small.mp4 a short one of few pixels,
# sound/1.m4a a minute of noise. opened/ holds sounds whose true length is known only to who reads or renders all of
# them: an hour of MP3 without a header and of ADTS, and just under a minute of MIDI; and a WAV file beside. fields/
# holds 1080i25, marked as interlaced and not. The rest carry numbers: the picture is 8 rows of 20 blocks, a column a
# bit, white for a set one, the lowest at the left: 4 bits of clip, 16 of frame; every second row is turned over. A
# moving test picture shines through.
set -euo pipefail
mkdir -p "$1"/{show,seek,long,sound,opened,fields,rates,lips}
cd "$1"

# encode NAME RATE SECONDS PRESET GRAPH [OPTION...]
encode() {
    [[ -e $1.mp4 ]] && return
    ffmpeg -nostdin -v error -y -f lavfi -i "${sound:-sine=frequency=440}:sample_rate=48000:duration=$3" \
        -filter_complex "$5" -map '[picture]' -map 0:a -t "$3" \
        -c:v libx264 -preset "$4" -g "$2" -pix_fmt yuv420p "${@:6}" -c:a aac "$1.part.mp4"
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

fields="testsrc2=size=1920x1080:rate=50,noise=c0s=10:allf=t,interlace=scan=tff"
encode fields/1 25 8 veryfast "$fields[picture]" -flags +ilme+ildct
encode fields/2 25 8 veryfast "$fields,setfield=prog[picture]"

# Music under the movie.
if [[ ! -e sound/1.m4a ]]; then
    ffmpeg -nostdin -v error -y -f lavfi -i "anoisesrc=color=pink:sample_rate=44100:duration=60" -ac 2 -c:a aac \
        sound/1.part.m4a
    mv sound/1.part.m4a sound/1.m4a
fi

# hour NAME ENCODING...: a minute of noise sixty times over; frames of these formats may simply follow each other.
hour() {
    [[ -e $1 ]] && return
    ffmpeg -nostdin -v error -y -f lavfi -i "anoisesrc=color=pink:sample_rate=44100:duration=60" -ac 2 "${@:2}" \
        minute.part
    for _ in {1..60}; do cat minute.part; done >"$1.part"
    mv "$1.part" "$1"
    rm minute.part
}

# Sixteen voices, a chord every half second, each at another pitch.
midi() {
    [[ -e $1 ]] && return
    /usr/bin/python3 - "$1" <<'END'
import sys
track = b""
for beat in range(116):
    chord = [(voice, 30 + (beat * (voice + 3) + 5 * voice) % 60) for voice in range(16)]
    track += b"".join(b"\0" + bytes([0x90 + voice, note, 90]) for voice, note in chord)
    track += b"\x60" + b"\0".join(bytes([0x80 + voice, note, 0]) for voice, note in chord)
track += b"\0\xff\x2f\0"
with open(sys.argv[1], "wb") as file:  # 96 ticks a beat of half a second
    file.write(b"MThd\0\0\0\6\0\0\0\1\0\x60MTrk" + len(track).to_bytes(4, "big") + track)
END
}

[[ -e opened/1.wav ]] || {
    ffmpeg -nostdin -v error -y -i sound/1.m4a opened/1.part.wav
    mv opened/1.part.wav opened/1.wav
}
hour opened/2.mp3 -c:a libmp3lame -b:a 320k -write_xing 0 -id3v2_version 0 -f mp3
hour opened/3.aac -c:a aac -b:a 256k -f adts
midi opened/4.mid

# One after the other on stage: other sizes and frame rates.
numbered show/1 1 1920x1080 30 3
numbered show/2 2 1280x720 25 3
numbered show/3 3 640x480 24 3
numbered show/4 4 960x540 50 3
numbered show/5 5 320x240 15 3

numbered seek/1 6 1920x1080 30 60
# A beep with every fifteenth frame, in the third clip 40 ms after it.
for clip in 1 2 3; do
    beat="mod(t+0.5-$((clip / 3))*0.04\\,0.5)"
    sound="aevalsrc=0.8*sin(2*PI*1000*$beat)*lt($beat\\,0.03)" \
        numbered lips/$clip $((9 + clip)) 1920x1080 30 20 veryfast 0
done
numbered rates/1 8 1920x1080 30 15 veryfast 0
numbered rates/2 9 1280x720 60 15 veryfast 0
if [[ ${2:-} == long ]]; then
    numbered long/1 7 1920x1080 30 630 ultrafast 0
fi
