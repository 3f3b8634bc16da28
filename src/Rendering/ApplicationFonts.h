// The faces that the programs carry with them.
#pragma once

namespace tessara {

/// Makes "Inter Tabular" known to the font database. To be called once, after the application
/// object.
void loadApplicationFonts();

} // namespace tessara
