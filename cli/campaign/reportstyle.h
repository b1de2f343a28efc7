// SPDX-License-Identifier: MIT
// The style of a campaign's page, on the screen and on paper.
#pragma once

namespace campaign {

inline constexpr const char *kReportStyle = R"css(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { font: 14px/1.45 "Liberation Sans", "DejaVu Sans", Arial, sans-serif; color: #1b2733; background: #fff;
       max-width: 1240px; margin: 0 auto; padding: 28px 32px 60px; }
h1 { font-size: 27px; line-height: 1.2; margin: 0 0 4px; }
h2 { font-size: 18px; margin: 34px 0 8px; padding-bottom: 4px; border-bottom: 2px solid #1f4e79; color: #1f4e79; }
p { margin: 6px 0; max-width: 80em; }
.lead { color: #51606e; font-size: 15px; }
.sum { display: flex; flex-wrap: wrap; margin: 18px 0 8px; }
.tile { margin: 0 10px 6px 0; border: 1px solid #cfd8e0; border-left-width: 6px; border-radius: 4px; padding: 8px 12px; min-width: 104px; }
.tile b { display: block; font-size: 24px; line-height: 1.15; font-weight: 600; }
.tile span { color: #51606e; font-size: 12.5px; }
.tile.big { min-width: 200px; }
.good { border-left-color: #2e7d32; }
.bad { border-left-color: #b71c1c; }
.none { border-left-color: #cfd8e0; }
table { border-collapse: collapse; width: 100%; }
th { text-align: left; font-weight: 600; font-size: 12px; color: #51606e; border-bottom: 1px solid #8fa1b1;
     padding: 4px 8px; vertical-align: bottom; }
td { padding: 5px 8px; border-bottom: 1px solid #e3e8ed; vertical-align: top; }
td.n, th.n { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
tr { break-inside: avoid; }
table.facts { width: auto; }
table.facts th { font-weight: 400; padding-right: 24px; border-bottom: 1px solid #e3e8ed; vertical-align: top;
                 font-size: 14px; }
.cases { font-size: 12.5px; }
.id { font-weight: 600; white-space: nowrap; }
.more { color: #51606e; font-size: 11.5px; }
.told { color: #b71c1c; }
code, .packets { font: 11.5px "DejaVu Sans Mono", "Liberation Mono", monospace; overflow-wrap: anywhere; }
.packets { color: #51606e; font-size: 10.5px; }
.p { white-space: nowrap; }
.f { white-space: nowrap; }
table.pairs td { padding-right: 40px; }
.v { white-space: nowrap; font-weight: 600; }
.v.ok { color: #1b6b20; }
.v.no { color: #b71c1c; }
.v.odd { color: #8a4b00; }
svg { display: block; }
.legend { margin: 6px 0 10px; font-size: 12.5px; }
.legend span { display: inline-block; margin-right: 22px; }
.legend svg { display: inline-block; vertical-align: middle; margin-right: 5px; }
.note { background: #f5f7f9; border-left: 4px solid #8fa1b1; padding: 8px 14px; margin: 10px 0; }
@page { size: A4 landscape; margin: 13mm 12mm 15mm;
        @bottom-left { content: string(title); font: 8pt "Liberation Sans"; color: #51606e; }
        @bottom-right { content: "page " counter(page) " of " counter(pages); font: 8pt "Liberation Sans"; color: #51606e; } }
@media print {
  body { font-size: 9pt; max-width: none; padding: 0; }
  h1 { font-size: 18pt; string-set: title content(); }
  h2 { font-size: 12.5pt; margin-top: 13pt; break-after: avoid; }
  .cases { font-size: 7.8pt; }
  th, .more { font-size: 7.3pt; }
  table.facts th { font-size: 9pt; }
  td { padding: 2.5pt 5pt; }
  code { font-size: 7.2pt; }
  .packets { font-size: 6.4pt; }
  .tile b { font-size: 15pt; }
  .tile span, .legend { font-size: 8pt; }
  .whole { break-inside: avoid; }
}
)css";

} // namespace campaign
