// The statements by their first words.
#pragma once

#include "stmt/lists.h"

namespace zy {

// The first token of the statement is the current one.
void parseExpressionStatement();
void parseDeclarationStatement();
void parseClause(int code);         // else, case, default
void parseWordStatement(int code);  // a word of class KC_STATEMENT
void defineLabel(StmtNode *statement, NameEntry *name);

// ---- Parts that several of them share -----------------------------------------------------------

// Parses an expression; its tree, or NULL with errorFlag set after a message.
ExprNode *parseTree();
// The same for a condition: threads it into the statement's chain. `word` names the statement in
// the message for arrays.
bool parseCondition(StmtNode *statement, const char *word);
// Checks that tree is of that type, and hangs it on operand A with its chain.
void takeArgument(StmtNode *statement, ExprNode *tree, int expected);

// The variable of a foreach: the tree is its name, or an assignment to it. NULL for any other tree.
TypeInfo *foreachIndex(const ExprNode *tree);

void parseIf(StmtNode *statement);
void parseWhile(StmtNode *statement);
void parseFor(StmtNode *statement);
void parseDo(StmtNode *statement);
void parseForeach(StmtNode *statement);
void parseSwitch(StmtNode *statement);
void parseCaseLabel(bool isDefault);
void parseReturn(StmtNode *statement);
void parseGoto(StmtNode *statement);
void parseBreak(StmtNode *statement);
void parseContinue(StmtNode *statement);
void parseDelete(StmtNode *statement);
void parseUsing();

}  // namespace zy
