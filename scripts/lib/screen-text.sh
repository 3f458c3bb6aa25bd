# shellcheck shell=bash
# Reading text off a screenshot, for tests that must see what a person sees: tesseract's words with
# their boxes, in the screenshot's own pixels. Needs imagemagick and tesseract-ocr.
#
#   screen_text_words IMAGE [GEOMETRY]   "X Y W H WORD" per word found (GEOMETRY: a crop, WxH+X+Y)
#   screen_text_find IMAGE DIGITS [GEOMETRY]
#                                        "X Y" of the middle of the first word whose digits contain
#                                        DIGITS (digits only: OCR may read "," as "."); else fails

# Panel text is small: it is cropped, scaled up four times and made grey before tesseract reads it.
SCREEN_TEXT_SCALE=4

screen_text_words() {
    local image=$1 geometry=${2:-} scaled offset_x=0 offset_y=0
    scaled=$(mktemp --suffix=.png)
    if [ -n "$geometry" ]; then
        convert "$image" -crop "$geometry" +repage -colorspace Gray -resize "$((SCREEN_TEXT_SCALE * 100))%" "$scaled"
        offset_x=$(sed -n 's/^[0-9]*x[0-9]*+\([0-9]*\)+[0-9]*$/\1/p' <<<"$geometry")
        offset_y=$(sed -n 's/^[0-9]*x[0-9]*+[0-9]*+\([0-9]*\)$/\1/p' <<<"$geometry")
    else
        convert "$image" -colorspace Gray -resize "$((SCREEN_TEXT_SCALE * 100))%" "$scaled"
    fi
    # Sparse text (page segmentation mode 11): a panel is a row of unrelated bits of text.
    tesseract "$scaled" - --psm 11 tsv 2>/dev/null | awk -F '\t' -v s="$SCREEN_TEXT_SCALE" \
        -v ox="${offset_x:-0}" -v oy="${offset_y:-0}" '
        NR > 1 && $12 != "" && $12 !~ /^[[:space:]]*$/ {
            printf "%d %d %d %d %s\n", ox + $7 / s, oy + $8 / s, $9 / s, $10 / s, $12
        }'
    rm -f "$scaled"
}

screen_text_find() {
    local image=$1 digits=$2 geometry=${3:-} x y w h word
    [ -n "$digits" ] || return 1
    while read -r x y w h word; do
        if [[ "$(tr -cd '0-9' <<<"$word")" == *"$digits"* ]]; then
            echo "$((x + w / 2)) $((y + h / 2))"
            return 0
        fi
    done < <(screen_text_words "$image" "$geometry")
    return 1
}
