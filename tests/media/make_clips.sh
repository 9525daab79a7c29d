#!/bin/bash
# make_clips.sh FOLDER: the clips of the media tests, one for each extension and some in odd ways.
#
# Picture and sound are the same in all: N whole seconds in which the grey level grows evenly (luma 20 at the
# start, 40 more a second), so that a picture tells its time; a steady sine of 440 Hz at half amplitude.
set -euo pipefail
mkdir -p "$1"
cd "$1"

seconds=5
rate=25
run() { ffmpeg -nostdin -v error -y "$@"; }
# forge CLIP NAME CODE: that clip with other bytes.
forge() { perl -0777 -pe "$3" "$1" >"$2"; }

# Master copies without loss.
picture="nullsrc=s=176x144:r=$rate:d=$seconds,format=yuv420p,geq=lum='20+40*T':cb=128:cr=128"
sound="aevalsrc='0.5*sin(2*PI*440*t)':s=44100:d=$seconds"
run -f lavfi -i "$picture" -f lavfi -i "$sound" -c:v ffv1 -c:a pcm_s16le master.mkv
run -i master.mkv -vf scale=720:576 -ar 48000 -ac 2 -c:v ffv1 -c:a pcm_s16le pal.mkv

h264=(-c:v libx264 -preset veryfast -g 50 -pix_fmt yuv420p)
mp4=("${h264[@]}" -c:a aac)
mpeg=(-c:v mpeg2video -b:v 800k -g 15)
ps=(-c:a mp2 -b:a 128k -f mpeg)

# Movies.
run -i master.mkv "${mp4[@]}" clip.mov "${mp4[@]}" -f mp4 clip.m4v "${mp4[@]}" -bf 2 -movflags +faststart clip.mp4 \
    -c:v mpeg4 -c:a pcm_s16be -f mov clip.qt -c:v mpeg4 -c:a aac clip.3g2 -c:v h263 -c:a aac clip.3gp \
    -c:v mpeg4 -vtag DX50 -c:a libmp3lame clip.avi -c:v wmv2 -b:v 400k -c:a wmav2 clip.wmv \
    -c:v msmpeg4 -b:v 400k -c:a wmav2 clip.asf -c:v mpeg1video -b:v 800k -g 15 -bf 2 "${ps[@]}" clip.mpg \
    "${mpeg[@]}" "${ps[@]}" clip.mpeg -an "${mpeg[@]}" -bf 2 clip.m2v
run -i pal.mkv -af asetnsamples=1920 -target pal-dv -f dv clip.dv \
    -c:v mpeg2video -b:v 3M -g 15 -bf 2 -c:a ac3 -f vob clip.vob

# Sounds. Layer I and MIDI have no encoder: silence, 384 samples a frame at 48 kHz and 384 kbit/s; two notes.
perl -e 'print "\xff\xff\xc4" . "\0" x 381 for 1 .. 625' >clip.mp1
printf 'MThd\0\0\0\6\0\0\0\1\1\xf4MTrk\0\0\0\x16\0\x90\x45\x64\x8f\x50\x80\x45\0\0\x90\x39\x64\x95\x0c\x80\x39\0\0\xff\x2f\0' >clip.mid
cp clip.mid midi.mov
run -i master.mkv -vn -c:a pcm_s16be clip.aif -vn -c:a pcm_s24be clip.aiff -vn -c:a pcm_mulaw -f aiff clip.aifc \
    -vn -c:a pcm_s16be clip.au -vn -c:a pcm_s16le clip.wav -vn -c:a libmp3lame -b:a 128k clip.mp3 -vn -c:a mp2 clip.mp2 \
    -vn -c:a aac clip.aac -vn -c:a aac -f mp4 clip.m4a -vn -c:a wmav2 clip.wma

# The same streams bare, where an extension holds them now and then.
run -i master.mkv -an -c:v mpeg1video -b:v 800k -g 15 -f mpeg1video raw.mpeg -an -c:v mpeg4 -f m4v raw.m4v \
    "${mpeg[@]}" -c:a mp2 -f mpegts stream.mpg
# Varying bit rate, and no header that tells the length.
run -f lavfi -i "aevalsrc='if(lt(t,2),0,0.5*sin(2*PI*440*t)*random(0))':s=44100:d=$seconds" \
    -c:a libmp3lame -q:a 4 -write_xing 0 -f mp3 headless.mp3

# Another length, for changing from one to the other; no sound; seconds between pictures.
run -i master.mkv -t 3 "${mp4[@]}" short.mp4 -an "${mp4[@]}" silent.mp4 \
    -vf fps=1/2 -fps_mode passthrough "${mp4[@]}" sparse.mp4
# Sound that ends well before the pictures, and sound that begins well after them.
run -i master.mkv -itsoffset 2 -i master.mkv -map 0 -af atrim=end=2.5 "${mp4[@]}" brief_sound.mp4 \
    -map 0:v -map 1:a -t $seconds "${mp4[@]}" late_sound.mkv
# Titles that ask to be shown.
printf '1\n00:00:00,000 --> 00:00:05,000\nMMMMMMMM\nMMMMMMMM\n' >titles.srt
run -i master.mkv -i titles.srt -map 0 -map 1 "${mp4[@]}" -c:s srt -disposition:s default titled.mkv
# Four quarters of four greys, the fourth the brightest, and headers that have them turned and mirrored: a point x, y is
# to be shown at a x + c y, b x + d y. The name says what is then to be seen, row by row.
run -f lavfi -i "nullsrc=s=160x96:r=$rate:d=2,format=yuv420p,geq=lum='60+40*gte(X,W/2)+80*gte(Y,H/2)':cb=128:cr=128" \
    -f lavfi -i "sine=d=2" "${mp4[@]}" quarters_1234.mp4
for turn in "3142 0 1 -1 0" "4321 -1 0 0 -1" "2413 0 -1 1 0" "2143 -1 0 0 1" "3412 1 0 0 -1" "1324 0 1 1 0" \
    "4231 0 -1 -1 0"; do
    read -r seen a b c d <<<"$turn"
    forge quarters_1234.mp4 "quarters_$seen.mp4" \
        "s/tkhd.{40}\\K.{20}/pack 'l>5', map {65536 * \$_} $a, $b, 0, $c, $d/es"
done
# One key frame, and so many pictures behind it that to go to the last ones takes most of a second.
run -i master.mkv -vf fps=200,scale=1920:1080 -c:v libx264 -preset ultrafast -g 2000 -pix_fmt yuv420p -c:a aac far.mp4
# What cameras and editors make: pictures at uneven times, an edit list that leaves the first second out, a late
# clock and one that begins anew, 4:2:2, 4:4:4 of odd size, 10 bit, full range, few pixels, many pictures.
run -i master.mkv -vf "select='lt(mod(n,10),6)'" -fps_mode vfr "${mp4[@]}" uneven.mp4 \
    -vf tpad=start_duration=1 -af adelay=1000 "${mp4[@]}" -g 500 whole.mp4 \
    "${mpeg[@]}" -c:a mp2 -output_ts_offset 50000 -f mpegts late_clock.mpg \
    "${mpeg[@]}" -c:a mp2 -output_ts_offset 95441 -f mpegts wrapped.mpg -c:v prores_ks -c:a pcm_s16le editor.mov \
    -vf scale=177:143 "${mp4[@]}" -pix_fmt yuv444p odd.mp4 "${mp4[@]}" -pix_fmt yuv420p10le ten_bit.mp4 \
    -vf scale=out_range=full "${mp4[@]}" -color_range pc full_range.mp4 \
    -vf scale=8:8 -c:v mpeg4 -c:a aac tiny.mp4 -vf fps=120 "${mp4[@]}" fast.mp4 \
    -vf fps=24000/1001 "${mp4[@]}" film.mp4
run -ss 1 -i whole.mp4 -c copy edited.mp4
# Two recordings one behind the other, each with a clock of its own; one that begins with its costly part.
for clock in 0 100; do run -t 1.6 -i master.mkv "${mpeg[@]}" -c:a mp2 -output_ts_offset $clock -f mpegts -; done >jump.mpg
run -f lavfi -i "testsrc2=s=176x144:r=25:d=40,noise=alls=90:allf=t:enable='lt(t,8)'" \
    -c:v mpeg2video -q:v 3 -g 15 -f mpegts calms_down.mpg
# Bars that move from field to field: marked as interlaced, and not.
fields="nullsrc=s=176x144:r=50:d=2,format=yuv420p,geq=lum='60+120*lt(mod(X+8*N,64),32)':cb=128:cr=128,\
tinterlace=interleave_top,setfield"
run -f lavfi -i "$fields=tff" "${h264[@]}" -flags +ilme+ildct -f mp4 interlaced.mp4
run -f lavfi -i "$fields=tff" -c:v mpeg2video -flags +ilme+ildct -f mpeg interlaced.mpg
run -f lavfi -i "$fields=prog" "${h264[@]}" -f mp4 combed.mp4
# The first two seconds marked as not interlaced, the last two as interlaced.
{
    run -f lavfi -i "$fields=prog" -c:v mpeg2video -f mpeg2video -
    run -f lavfi -i "$fields=tff" -c:v mpeg2video -flags +ilme+ildct -f mpeg2video -
} | run -fflags +genpts -r $rate -f mpegvideo -i - -c copy mixed.mkv
# Ten pictures, each 20 levels of 255 brighter than the one before.
run -f lavfi -i "nullsrc=s=64x48:r=10:d=1,format=yuv420p,geq=lum='33+17.18*N':cb=128:cr=128" -f lavfi -i sine=d=1 \
    "${mp4[@]}" counted.mp4
# As large as pictures come.
run -f lavfi -i color=gray:s=7680x4320:r=$rate -frames:v 1 -c:v mpeg4 -f mp4 large.mp4
# A sound with the cover of an album.
run -f lavfi -i color=red:s=64x64:d=1 -frames:v 1 -f image2 -update 1 cover.jpg
run -t 2 -i master.mkv -i cover.jpg -map 0:a -map 1:v -c:a aac -c:v copy -disposition:v attached_pic -f mp4 cover.m4a
# The data stop well before the duration that the header gives.
head -c $(($(stat -c %s clip.mp4) * 6 / 10)) clip.mp4 >early.mp4
# Streams that no decoder knows; giant pictures, each by itself and all by the header; lengths that the tracks know better.
forge clip.mp4 unknown.mp4 's/avc1/xqxq/g'
forge clip.mp4 broken.mp4 's/avcC/xqxq/g'
forge clip.mp4 mute.mp4 's/mp4a/xqxq/g'
forge editor.mov giant.mov 's/icpf.{8}\K..../\x3e\x80\x3e\x80/gs'
forge clip.mp4 huge.mp4 's/avc1.{24}\K..../\xff\xff\xff\xff/gs'
forge clip.mp4 long.mp4 's/mvhd.{16}\K..../\x7f\xff\xff\xff/gs'
forge clip.mp4 brief.mp4 's/mvhd.{16}\K..../\0\0\x03\xe8/gs'
forge clip.wma distant.wma 's/\xa1\xdc\xab\x8c.{60}\K.{8}/\xff\xff\xff\xff\xff\xff\xff\x7f/s'
# What cannot be played.
mkdir -p bad/folder.mp4
: >bad/empty.mov
echo "This is no movie." >bad/text.mp4
for name in mpg mp3; do perl -e 'srand 7; print map { chr rand 256 } 1 .. 200000' >bad/random.$name; done
head -c 20000 clip.mov >bad/no-index.mov
forge clip.mp4 bad/index-only.mp4 's/mdat\K.*//s'
forge clip.avi bad/header-only.avi 's/movi\K.*//s'
forge clip.wav bad/header-only.wav 's/data\K.*//s'
cat bad/index-only.mp4 bad/random.mpg >bad/garbage.mp4
printf MThd >bad/cut.mid

rm master.mkv pal.mkv cover.jpg whole.mp4 titles.srt
