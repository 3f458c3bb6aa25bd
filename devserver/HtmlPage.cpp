#include "HtmlPage.h"

namespace {

const char styleSheet[] = R"css(
:root { color-scheme: light dark; --accent: #0a84ff; --bg: #f2f2f7; --card: #ffffff; --text: #1c1c1e;
        --muted: #6e6e73; --line: #d1d1d6; --good: #248a3d; --bad: #d70015; }
@media (prefers-color-scheme: dark) {
  :root { --bg: #1c1c1e; --card: #2c2c2e; --text: #f2f2f7; --muted: #98989d; --line: #3a3a3c;
          --good: #30d158; --bad: #ff453a; }
}
* { box-sizing: border-box; }
body { margin: 0; min-height: 100vh; display: flex; align-items: center; justify-content: center;
       background: var(--bg); color: var(--text);
       font: 15px/1.45 system-ui, -apple-system, "Segoe UI", Cantarell, "Noto Sans", sans-serif; }
main { width: min(560px, calc(100vw - 32px)); margin: 32px 0; }
.card { background: var(--card); border-radius: 14px; padding: 28px 28px 24px;
        box-shadow: 0 1px 2px rgba(0,0,0,.08), 0 8px 28px rgba(0,0,0,.08); }
.card + .card { margin-top: 16px; }
.brand { display: flex; align-items: center; gap: 10px; font-weight: 600; color: var(--muted);
         font-size: 13px; letter-spacing: .02em; margin-bottom: 18px; }
.brand .mark { width: 26px; height: 26px; border-radius: 7px; background: var(--accent); color: #fff;
               display: grid; place-items: center; font-size: 15px; }
h1 { font-size: 22px; margin: 0 0 6px; }
h2 { font-size: 17px; margin: 0 0 12px; }
p { margin: 0 0 14px; }
.muted { color: var(--muted); font-size: 13px; }
ul.accounts { list-style: none; padding: 0; margin: 0 0 20px; border: 1px solid var(--line); border-radius: 10px; }
ul.accounts li { padding: 10px 14px; display: flex; justify-content: space-between; gap: 12px; }
ul.accounts li + li { border-top: 1px solid var(--line); }
.actions { display: flex; gap: 10px; justify-content: flex-end; }
button { font: inherit; font-weight: 600; border-radius: 8px; padding: 9px 18px; cursor: pointer;
         border: 1px solid var(--line); background: transparent; color: var(--text); }
button.primary { background: var(--accent); border-color: var(--accent); color: #fff; }
button:focus-visible { outline: 3px solid color-mix(in srgb, var(--accent) 45%, transparent); outline-offset: 1px; }
table { width: 100%; border-collapse: collapse; font-variant-numeric: tabular-nums; }
th, td { text-align: left; padding: 7px 0; border-bottom: 1px solid var(--line); }
td.num, th.num { text-align: right; }
tr:last-child td { border-bottom: none; }
.figures { display: grid; grid-template-columns: repeat(3, 1fr); gap: 12px; margin-bottom: 18px; }
.figure { border: 1px solid var(--line); border-radius: 10px; padding: 10px 12px; }
.figure .label { color: var(--muted); font-size: 12px; }
.figure .value { font-size: 20px; font-weight: 600; font-variant-numeric: tabular-nums; }
.net { color: var(--good); }
.error { color: var(--bad); }
code { font-family: ui-monospace, "DejaVu Sans Mono", monospace; font-size: 12px; word-break: break-all; }
)css";

} // namespace

QString HtmlPage::render(const QString &title, const QString &body)
{
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
                          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                          "<title>%1</title><style>%2</style></head><body><main>"
                          "%3</main></body></html>\n")
        .arg(escape(title), QString::fromUtf8(styleSheet), body);
}
