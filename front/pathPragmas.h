// Pragmas that lengthen the search paths. A path keeps what it has; a text that it holds already is
// not added again.
#pragma once

namespace zy {

void pragmaFpath();
void pragmaIpath();
void pragmaLpath();
void pragmaPath();
// #pragma package: the folders of a package, on all four paths.
void pragmaPackage();

}  // namespace zy
