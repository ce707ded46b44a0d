// Pragmas that are commands of the console too, which writes them without parentheses.
#pragma once

namespace zy {

// #pragma pack(n): the most that a member of a struct is aligned to, from here on.
void pragmaPack(bool withParenthesis);
// #pragma remvar(name): takes a global variable out of sight.
void pragmaRemvar(bool withParenthesis);

}  // namespace zy
