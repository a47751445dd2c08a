#pragma once

/// The accent of the whole program as a string literal, so that style sheets are put together from it by
/// the compiler: u"color: " ACCENT_COLOUR ";"_s
#define ACCENT_COLOUR u"#00BFFF"
