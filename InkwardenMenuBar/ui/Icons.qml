pragma Singleton
import QtQuick

// The icon table: every symbol name the views and the model use, mapped to a glyph of Google's
// Material Icons (Apache 2.0, Debian package fonts-material-design-icons-iconfont). Glyphs are
// text, so they take any colour and stay sharp at every size.
QtObject {
    readonly property string family: "Material Icons"

    readonly property var glyphs: ({
        "gearshape": "\ue8b8",                          // settings
        "chart.line.uptrend.xyaxis": "\ue8e5",          // trending_up
        "megaphone": "\uef49",                          // campaign
        "banknote": "\uef63",                           // payments
        "book.closed": "\ue865",                        // book
        "books.vertical": "\ue431",                     // collections_bookmark
        "book.closed.fill": "\ue86e",                   // class
        "headphones": "\uf01f",                         // headphones
        "globe.europe.africa": "\ue80b",                // public
        "text.book.closed": "\ue666",                   // auto_stories
        "calendar.badge.clock": "\uea5d",               // more_time
        "arrow.down.circle": "\uf181",                  // arrow_circle_down
        "arrow.down.circle.fill": "\uf000",             // download_for_offline
        "arrow.clockwise": "\ue5d5",                    // refresh
        "arrow.up.forward.square": "\ue89e",            // open_in_new
        "exclamationmark.triangle.fill": "\ue002",      // warning
        "square.grid.2x2": "\ue9b0",                    // grid_view
        "person.crop.circle.badge.checkmark": "\ue174", // how_to_reg
        "chevron.left": "\ue5cb",                       // chevron_left
        "chevron.right": "\ue5cc",                      // chevron_right
        "chevron.up": "\ue5ce",                         // expand_less
        "chevron.down": "\ue5cf",                       // expand_more
        "progress.spinner": "\ue863"                    // autorenew, turned by Spinner
    })

    function glyph(name) {
        return glyphs[name] ?? ""
    }

    function has(name) {
        return glyphs[name] !== undefined
    }
}
