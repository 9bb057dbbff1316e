#include "node/panel_pieces.hpp"

namespace node {
namespace {

constexpr const char *kStyle = R"(<style>
text{font-family:"DejaVu Sans",Verdana,Arial,sans-serif;font-size:20px;fill:#1f2933}
.page{fill:#f4f6f8}.name{font-size:40px;font-weight:bold}.note{fill:#4b5763;font-size:24px}
.shelf{fill:#27313d}.screw{fill:#8b98a5}.shelf-name{font-size:26px;font-weight:bold;fill:#fff}
.shelf-note{font-size:22px;fill:#c9d3dd}.slot-name{font-size:20px;fill:#dbe3ea;text-anchor:middle}
.face{fill:#e8edf1;stroke:#8b98a5;stroke-width:2}.kind-band{fill:#45566a}
.kind{fill:#fff;font-weight:bold;text-anchor:middle}.sum{font-size:19px;text-anchor:middle}
.line{stroke:#8b98a5;stroke-width:2}.empty rect{fill:#303c49;stroke:#66737f;stroke-width:2;
stroke-dasharray:8 6}.empty text{fill:#a3b0bc;text-anchor:middle}
.port text{font-size:17px}.port .count{text-anchor:end}.port rect{stroke-width:2}.legend text{font-size:23px}.legend .port text{font-size:17px}
.legend .chip text{font-size:17px}
.mark{stroke-width:2.5;fill:none;stroke-linejoin:round;stroke-linecap:round}
.up rect{fill:#157a3f;stroke:#0b5129}.up text{fill:#fff}.up .mark{fill:#fff;stroke:#fff}
.down rect{fill:#fce6b8;stroke:#9c6200}.down text{fill:#4a2f00}.down .mark{stroke:#6b4400}
.invisible rect{fill:url(#hatch);stroke:#5b6773}.invisible .mark{stroke:#1f2933}
.invisible text{paint-order:stroke;stroke:#dde3e8;stroke-width:5px;stroke-linejoin:round}
.unknown rect{fill:#e9dff8;stroke:#6b4fa0}.unknown .mark{stroke:#4c3480}
.absent rect{fill:none;stroke:#7a8793;stroke-dasharray:5 4}.absent text{fill:#5b6773}
.absent .mark{stroke:#7a8793}
.vs rect{fill:none;stroke-width:2.6}.chip text{fill:#fff;font-size:17px;text-anchor:middle}
</style>
<defs><pattern id="hatch" width="8" height="8" patternUnits="userSpaceOnUse">
<rect width="8" height="8" fill="#dde3e8"/>
<path d="M-2,2l4,-4M0,8l8,-8M6,10l4,-4" stroke="#9aa7b3" stroke-width="2"/></pattern></defs>
)";

struct VsLook {
  const char *colour;
  const char *dashes;
};
constexpr VsLook kVsLooks[PM_VS_NUM] = {
    {"#111827", "none"}, {"#1d4ed8", "none"}, {"#c0165f", "12 5"},
    {"#7c3aed", "3 4"},  {"#0e7490", "18 6"}, {"#b83c00", "8 4 2 4"},
    {"#3f6212", "5 5"},  {"#7a5200", "none"}, {"#475569", "14 4 3 4"}};

std::string number(int value) {
  return std::to_string(value);
}

// Each state has a mark of its own: colour is not the only cue.
std::string mark(PortState state, int x, int y) {
  const auto path = [&](const std::string &steps) {
    return "<path class=\"mark\" d=\"M" + number(x) + "," + number(y) + steps + "\"/>";
  };
  switch (state) {
    case PortState::up:
      return path("m-6,4l6,-9l6,9z");
    case PortState::down:
      return path("m-6,-4l6,9l6,-9z");
    case PortState::invisible:
      return path("m-5,0a5,5 0 1 0 10,0a5,5 0 1 0 -10,0m-2,6l14,-12");
    case PortState::unknown:
      return path("m-4,-3a4,4 0 1 1 4,4v2m0,5v0");
    case PortState::absent:
      return path("m-4,-4l8,8m0,-8l-8,8");
  }
  return "";
}

}  // namespace

const char *panel_style() {
  return kStyle;
}

std::string escaped(std::string_view text) {
  std::string safe;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        safe += "&amp;";
        break;
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        safe += static_cast<unsigned char>(letter) < ' ' ? '?' : letter;
    }
  }
  return safe;
}

std::string shortened(const std::string &text, int most) {
  int letters = 0;
  std::size_t end = 0;
  std::size_t cut = 0;
  for (; end < text.size(); ++end) {
    if ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
      continue;
    }
    if (letters == most - 1) {
      cut = end;
    }
    if (letters++ == most) {
      return text.substr(0, cut) + "\u2026";
    }
  }
  return text;
}

std::string rect(int x, int y, int width, int height, const std::string &more) {
  return "<rect x=\"" + number(x) + "\" y=\"" + number(y) + "\" width=\"" + number(width) +
         "\" height=\"" + number(height) + "\"" + more + "/>";
}

std::string text(const char *style, int x, int y, const std::string &words) {
  const std::string attribute = *style == '\0' ? "" : std::string(" class=\"") + style + "\"";
  return "<text" + attribute + " x=\"" + number(x) + "\" y=\"" + number(y) + "\">" +
         escaped(words) + "</text>";
}

std::string titled(const std::string &words) {
  return "<title>" + escaped(words) + "</title>";
}

std::string box(PortState state, int x, int y, int width, const std::string &label,
                const std::string &count, const std::string &title) {
  constexpr int kBaseline = 18;
  constexpr int kMarkRoom = 14;
  std::string drawn = std::string("<g class=\"port ") + name_of(state) + "\">";
  drawn += title.empty() ? "" : titled(title);
  drawn += rect(x, y, width, kPortHeight, " rx=\"3\"") + text("", x + 6, y + kBaseline, label);
  if (!count.empty()) {
    drawn += text("count", x + width - 2 * kMarkRoom, y + kBaseline, count);
  }
  return drawn + mark(state, x + width - kMarkRoom, y + kPortHeight / 2) + "</g>\n";
}

std::string outline(unsigned id, int x, int y, int width, int height) {
  const VsLook &look = kVsLooks[id];
  return "<g class=\"vs vs" + std::to_string(id) + "\">" +
         rect(x, y, width, height,
              std::string(" rx=\"5\" stroke=\"") + look.colour + "\" stroke-dasharray=\"" +
                  look.dashes + "\"") +
         "</g>\n";
}

std::string chip(unsigned id, int x, int y, int width) {
  return "<g class=\"chip\">" +
         rect(x, y, width, kPortHeight,
              std::string(" rx=\"4\" fill=\"") + kVsLooks[id].colour + "\"") +
         text("", x + width / 2, y + 18, std::to_string(id)) + "</g>\n";
}

}  // namespace node
