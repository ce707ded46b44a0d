// The forms in which a script and the console change the vocabulary. They read their arguments as
// tokens, behind their word; the work is that of changeKeyword() and dropKeyword().
#pragma once

namespace zy {

// zykey(new, old), addkey(new, old) and remkey(name) as statements, with string literals.
void changeKeywordStatement(int mode);
void remkeyStatement();

// #pragma remkey(name), and the console command `remkey name`, with the word itself.
void pragmaRemkey(bool withParenthesis);

}  // namespace zy
