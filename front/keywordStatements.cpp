#include "front/keywordStatements.h"

#include <string>

#include "expr/value.h"
#include "front/keywordTable.h"
#include "front/lexer.h"
#include "instance/report.h"

namespace zy {

namespace {

// Reads a string literal, which is then the caller's. NULL, after the complaint, for another token.
Value *takeString(const char *complaint) {
    nextToken();
    if (tokenClass == TK_CONSTANT) {
        Value *text = takeConstant();
        if (text->type == DT_STRING)
            return text;
        deleteValue(text);
    }
    parseError("%s", complaint);
    return nullptr;
}

struct ArgumentComplaints {
    const char *first, *second;
};

constexpr ArgumentComplaints addkeyComplaints = {
    "the first argument of addkey() is not a string constant",
    "the second argument of addkey() is not a string constant",
};
constexpr ArgumentComplaints zykeyComplaints = {
    "the first argument of zykey() is not a string constant",
    "the second argument of zykey() is not a string constant",
};

bool takeComma() {
    if (expectChar(',', false))
        return true;
    parseError("missing the comma ','  before the second argument");
    return false;
}

// The name of the row that the current token stands for, "" for none. A copy: the row may go.
std::string keywordOfToken() {
    if (tokenClass == TK_KEYWORD)
        return currentKeyword.name;
    // A soft word that nothing calls comes as an identifier.
    if (tokenClass == TK_IDENTIFIER && keywordNamed(tokenValue.name->text))
        return tokenValue.name->text;
    return "";
}

void refuseToken(bool withParenthesis) {
    if (tokenClass == TK_CONSTANT)
        deleteValue(takeConstant());
    if (withParenthesis)
        parseError("the argument of remkey() is not a keyword");
    else
        parseError("the argument of remkey is not a keyword");
}

}  // namespace

void changeKeywordStatement(int mode) {
    const ArgumentComplaints &complaints = mode == MODE_ADDKEY ? addkeyComplaints : zykeyComplaints;
    if (!expectChar('(', true))
        return;
    Value *newName = takeString(complaints.first);
    if (!newName)
        return;
    Value *oldName = takeComma() ? takeString(complaints.second) : nullptr;
    if (oldName && expectChar(')', true))
        changeKeyword(mode, newName, oldName);
    deleteValue(newName);
    if (oldName)
        deleteValue(oldName);
}

void remkeyStatement() {
    if (!expectChar('(', true))
        return;
    Value *name = takeString("the argument of remkey() is not a string constant");
    if (!name)
        return;
    if (expectChar(')', true))
        dropKeyword(name);
    deleteValue(name);
}

void pragmaRemkey(bool withParenthesis) {
    if (withParenthesis && !expectChar('(', true))
        return;
    nextToken();
    std::string word = keywordOfToken();
    if (word.empty())
        refuseToken(withParenthesis);
    else if (!withParenthesis || expectChar(')', true))
        dropWord(word.c_str());
}

}  // namespace zy
