# The boards of a lesson on the water cycle: what stands on them before the pointer comes.
# shellcheck shell=bash
# shellcheck disable=SC2154 # desktop/verbs.sh and scripts/previews

# The colours of notes, as a board file writes them.
declare -A colors=([yellow]=0 [blue]=1 [red]=2 [pink]=3 [orange]=4 [grey]=5)

# curve <distance> <decimals> <x> <y>...: points at about that distance on a smooth curve through the
# given ones, as a hand would draw it.
curve() {
    awk -v distance="$1" -v format=" %.$2f %.$2f" -v points="${*:3}" '
        # The curve of Catmull and Rom from b to c, with a before and d after them.
        function between(a, b, c, d, t) {
            return b + t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a))) / 2
        }
        BEGIN {
            last = split(points, at, " ") / 2
            printf format, at[1], at[2]
            for (i = 1; i < last; ++i) {
                a = 2 * (i > 1 ? i - 1 : i); b = 2 * i; c = b + 2; d = 2 * (i + 2 <= last ? i + 2 : last)
                steps = int(sqrt((at[c] - at[b]) ^ 2 + (at[c - 1] - at[b - 1]) ^ 2) / distance) + 1
                for (step = 1; step <= steps; ++step) {
                    t = step / steps
                    printf format, between(at[a - 1], at[b - 1], at[c - 1], at[d - 1], t),
                        between(at[a], at[b], at[c], at[d], t)
                }
            }
            print ""
        }'
}

# shifted <x> <y> <points>...
shifted() {
    local dx=$1 dy=$2
    shift 2
    while (($#)); do
        printf '%d %d ' $((dx + $1)) $((dy + $2))
        shift 2
    done
}

# What a teacher draws, a stroke a line.
declare -A drawings=(
    [sun]="40 16 22 20 15 36 21 55 39 63 57 56 64 39 57 22 38 15
40 2 40 -14
66 14 78 2
76 40 92 41
66 66 77 78
40 76 39 92
14 66 3 77
4 40 -12 39
14 13 3 1"
    [sea]="0 12 20 0 40 12 60 22 80 11 100 0 120 12 140 22 160 11 180 0 200 11
8 40 28 29 48 40 68 50 88 39 108 29 128 40 148 50 168 39 188 29 206 38
0 68 20 57 40 68 60 78 80 67 100 57 120 68 140 78 160 67 180 57 200 66"
    [vapour]="10 90 0 72 14 54 2 36 12 16 6 0
50 96 40 76 54 58 42 38 52 20 46 2
90 90 80 72 94 54 82 36 92 16 86 0"
    [cloud]="30 79 8 71 2 52 14 37 36 38 42 16 66 4 92 12 104 28 126 14 152 22 160 46 182 46 192 62 176 78 122 82 70 81 26 77"
    [rain]="12 0 4 24
40 2 32 27
68 0 60 25
96 2 88 26
124 0 116 25
152 2 144 27
180 0 172 24
24 46 16 71
52 48 44 72
80 46 72 71
108 48 100 73
136 46 128 71
164 48 156 72
12 94 4 118
40 96 32 120
68 94 60 119
96 96 88 121
124 94 116 119
152 96 144 120
180 94 172 118
24 140 16 165
52 142 44 166
80 140 72 165
108 142 100 167
136 140 128 165
164 142 156 166"
)

# The board's elements, the lowest first. A kind lies below the next: images, notes, strokes, arrows.
items=$scratch/items
empty_board() { : >"$items"; }

# note <x> <y> <colour> <text>
note() {
    jq -n --argjson x "$1" --argjson y "$2" --argjson color "${colors[$3]}" --arg text "$4" \
        '{type: "postit", $x, $y, $color, $text}' >>"$items"
}
# arrow <x> <y> <x> <y> <colour> <width>
arrow() {
    jq -n --argjson x1 "$1" --argjson y1 "$2" --argjson x2 "$3" --argjson y2 "$4" --arg color "$5" \
        --argjson width "$6" '{type: "arrow", $x1, $y1, $x2, $y2, $color, $width}' >>"$items"
}
# stroke <x> <y>...: what the pen draws along the curve through these points.
stroke() {
    curve 4 1 "$@" | jq -s '{type: "freedraw", penColor: "#000000", penWidth: 2,
        path: [range(0; length; 2) as $i | {type: 1, x: .[$i], y: .[$i + 1]}]}' >>"$items"
}
# drawing <name> <x> <y>: the strokes of a drawing, its top left corner there.
drawing() {
    local strokes line
    mapfile -t strokes <<<"${drawings[$1]}"
    for line in "${strokes[@]}"; do
        # shellcheck disable=SC2046,SC2086 # the points are words
        stroke $(shifted "$2" "$3" $line)
    done
}
# photograph <x> <y> <width> [<option of convert>...]
photograph() {
    convert "$lake" "${@:4}" -resize "$3" png:- | base64 -w 0 \
        | jq -R --argjson x "$1" --argjson y "$2" '{type: "image", $x, $y, imageData: .}' >>"$items"
}
# keep_board <name>: the board as a file among the recent ones.
keep_board() { jq -s '{items: .}' "$items" >"$boards/$1.vtrz"; }
# open_prepared <name>: keeps the board and opens it. The file dialog begins where the boards are.
open_prepared() {
    keep_board "$1"
    open_board "$1.vtrz"
}

# mountains <seed> <height> <foot> <roughness>: the outline of a range of hills, as points of a
# polygon across the picture.
mountains() {
    awk -v seed="$1" -v height="$2" -v foot="$3" -v roughness="$4" '
        function chance(i, octave,   s) {
            s = sin(i * 12.9898 + octave * 78.233 + seed * 37.719) * 43758.5453
            return s - int(s) + (s < 0)
        }
        function smooth(x, octave,   i, f) {
            i = int(x); f = x - i; f = f * f * (3 - 2 * f)
            return chance(i, octave) * (1 - f) + chance(i + 1, octave) * f
        }
        BEGIN {
            printf "0,400"
            for (x = 0; x <= 960; x += 2) {
                y = foot; size = height; fineness = 1 / 320
                for (octave = 0; octave < 7; ++octave) {
                    y -= size * smooth(x * fineness + 10, octave)
                    size /= roughness; fineness *= 2
                }
                printf " %d,%.1f", x, y
            }
            printf " 960,400"
        }'
}

# A lake under the evening sun: sky with thin clouds and the sun in its haze, four ranges of hills,
# the last one wooded, and their reflection in water with a little wind on it.
lake=$scratch/lago.png
convert -size 960x400 'gradient:#4a8fce-#fde6c6' \
    \( -seed 12 -size 240x400 plasma:gray-gray -colorspace gray -blur 0x5 -normalize -level 50%,100% \
    -resize '960x130!' -size 960x270 xc:black -append -blur 0x6 -evaluate multiply 0.5 \) \
    -compose screen -composite \
    \( -size 960x400 xc:black -fill '#fff2cf' -draw 'circle 640,190 668,190' -blur 0x3 \
    \( +clone -fill '#ffcf80' -draw 'circle 640,190 760,190' -blur 0x50 \) \
    -compose screen -composite \) -composite -compose over \
    -fill '#a9bdd0' -draw "polygon $(mountains 3 130 400 2.1)" \
    -fill '#7f9cb3' -draw "polygon $(mountains 8 95 410 2.1)" \
    -fill '#527786' -draw "polygon $(mountains 14 60 420 2.1)" \
    -fill '#2c4f4b' -draw "polygon $(mountains 23 28 425 1.5)" \
    \( +clone -flip -resize '960x240!' -modulate 85,85 -motion-blur 0x3+90 \
    -fill '#17425f' -colorize 22 \
    \( -seed 9 -size 120x240 plasma:gray-gray -colorspace gray -normalize -resize '960x240!' \
    -level 20%,80% -evaluate multiply 0.12 \) -compose screen -composite \) \
    -append -depth 8 -strip "$lake"
