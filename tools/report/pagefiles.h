// What a report brings along: the texts of page.css and page.js.
#pragma once

namespace sorvane {
extern const char* const kPageStyle;
extern const char* const kPageScript;
} // namespace sorvane
