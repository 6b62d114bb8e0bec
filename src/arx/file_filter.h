// The module's file dialog filters ("Description (*.a;*.b)|*.a;*.b||") in the form the
// common file dialogs take: pairs of NUL-terminated strings ending with one more NUL.
#pragma once

#include <string>

namespace veltor::arx {

// "A|*.a|B|*.b||" -> "A\0*.a\0B\0*.b\0\0" (UTF-16). Pairs with an empty pattern are left out;
// a description left empty is the pattern itself. Empty (a single "\0\0") when the filter
// names nothing, which the dialogs read as "no filter".
std::u16string CommonDialogFilter(const std::string& filter);

}  // namespace veltor::arx
