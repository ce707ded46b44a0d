// The here-document: fprintf fp << WORD, with a text up to a line that holds only WORD. The text
// becomes the format of a plain fprintf call, and the expressions in it its arguments.

#include <cctype>
#include <cstring>
#include <string>

#include "expr/parserParts.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// ---- Lines and pieces of them -------------------------------------------------------------------

class RawLines {
public:
    RawLines() : saved(e_lang->rawLineMode) { e_lang->rawLineMode = 1; }
    ~RawLines() { e_lang->rawLineMode = saved; }
    RawLines(const RawLines &) = delete;

private:
    int saved;
};

// The text of the document line by line. A script held in memory may be one line of the buffer with
// line feeds in it.
class DocumentLines {
public:
    DocumentLines() { skipRest(); }

    bool next(std::string &line) {
        if (!inBuffer && !readLine())
            return false;
        const char *start = lineBuffer + linePos;
        size_t length = strcspn(start, "\n");
        line.assign(start, length);
        linePos = static_cast<int16_t>(linePos + length);
        skipRest();
        return true;
    }

private:
    // The reader of interactive lines gives `exit` for ever at the end of its input.
    static bool readLine() {
        if (fileMode || stringMode) {
            readSourceLine();
            return !endOfInput && !endOfFile;
        }
        bool isThere = readConsoleLine(lineBuffer, sizeof lineBuffer);
        linePos = 0;
        lineLength = isThere ? static_cast<int16_t>(strlen(lineBuffer)) : 0;
        lineBuffer[lineLength] = '\0';
        return isThere;
    }
    void skipRest() {
        const char *feed = strchr(lineBuffer + linePos, '\n');
        inBuffer = feed != nullptr;
        linePos = inBuffer ? static_cast<int16_t>(feed + 1 - lineBuffer) : lineLength;
    }

    RawLines raw;
    bool inBuffer = false;
};

// Another text in the place of the line, for the length of one parse.
class LineText {
public:
    explicit LineText(const std::string &text)
        : savedLine(lineBuffer, sizeof lineBuffer), savedPos(linePos), savedLength(lineLength) {
        lineLength = static_cast<int16_t>(text.size());
        memcpy(lineBuffer, text.c_str(), text.size() + 1);
        linePos = 0;
        pushedBack = false;
    }
    ~LineText() {
        memcpy(lineBuffer, savedLine.data(), savedLine.size());
        linePos = savedPos;
        lineLength = savedLength;
        pushedBack = false;
    }
    LineText(const LineText &) = delete;

private:
    std::string savedLine;
    int16_t savedPos, savedLength;
};

// The tree of a text that must be one expression as a whole.
ExprNode *parseText(const std::string &text, bool runMode) {
    if (text.size() >= sizeof lineBuffer)
        return nullptr;
    LineText line(text);
    SeparatorScope separators(false, KC_OPERATOR);
    ExprNode *tree = parseExpression(runMode);
    nextToken();
    bool isWhole = tokenClass == TK_CHAR && (tokenValue.character == ';' || endOfInput);
    if (tokenClass == TK_CONSTANT)
        deleteNode(tokenValue.constant);
    if (tree && isWhole)
        return tree;
    deleteNode(tree);
    return nullptr;
}

bool isNameStart(char c) { return isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool isNamePart(char c) { return isalnum(static_cast<unsigned char>(c)) || c == '_'; }

size_t nameEnd(const std::string &line, size_t start) {
    while (start < line.size() && isNamePart(line[start]))
        start++;
    return start;
}

// ---- Formats ------------------------------------------------------------------------------------

struct TypeFormat {
    int type;
    const char *format;
};
constexpr TypeFormat typeFormats[] = {
    {DT_CHAR, "%c"},        {DT_UCHAR, "%c"},     {DT_SHORT, "%hd"},   {DT_USHORT, "%hu"},
    {DT_INT, "%d"},         {DT_UINT, "%u"},      {DT_LLONG, "%I64d"}, {DT_ULLONG, "%I64u"},
    {DT_FLOAT, "%.2f"},     {DT_COMPLEX, "%.2f"}, {DT_DUAL, "%.2f"},   {DT_DOUBLE, "%.4lf"},
    {DT_DCOMPLEX, "%.4lf"}, {DT_DDUAL, "%.4lf"},  {DT_STRING, "%s"},   {DT_P_CHAR, "%s"},
    {DT_P_UCHAR, "%s"},
};

// NULL for a type that can't be printed here.
const char *formatOf(int type) {
    for (const TypeFormat &row : typeFormats)
        if (row.type == type)
            return row.format;
    return isPointer(type) ? "%p" : nullptr;
}

// ---- One line -----------------------------------------------------------------------------------

class Document {
public:
    explicit Document(bool mode) : runMode(mode) {}
    ~Document() { deleteNode(arguments); }
    Document(const Document &) = delete;

    void addText(const std::string &line) {
        for (char c : line)
            addCharacter(c);
        format += '\n';
    }
    void addLine(const std::string &line);
    // The arguments of the call, the format first; NULL after a message.
    ExprNode *takeArguments();

private:
    void addCharacter(char c) { format.append(c == '%' ? 2 : 1, c); }
    size_t addDollar(const std::string &line, size_t at);
    size_t addName(const std::string &line, size_t at);
    size_t addExpression(const std::string &line, size_t at);
    void addVariable(const std::string &name, const std::string &written);
    void addArgument(ExprNode *tree);
    size_t fail() {
        failed = true;
        return std::string::npos;
    }

    bool runMode;
    bool failed = false;
    std::string format;
    ExprNode *arguments = nullptr;
};

void Document::addLine(const std::string &line) {
    for (size_t at = 0; at < line.size() && !failed;) {
        bool isEscape = line[at] == '\\' && line[at + 1] == '$';
        if (isEscape)
            at++;
        if (line[at] == '$' && !isEscape)
            at = addDollar(line, at);
        else
            addCharacter(line[at++]);
    }
    format += '\n';
}

// At a $: gives the place behind what it names.
size_t Document::addDollar(const std::string &line, size_t at) {
    char next = line[at + 1];
    if (next == '\0' || isspace(static_cast<unsigned char>(next))) {
        addCharacter('$');
        return at + 1;
    }
    if (next == '(')
        return addExpression(line, at + 1);
    if (next == '{' || isNameStart(next))
        return addName(line, at + 1);
    parseError("'$%s' is invalid", line.c_str() + at + 1);
    return fail();
}

size_t Document::addName(const std::string &line, size_t at) {
    bool braced = line[at] == '{';
    size_t start = at + braced, end = nameEnd(line, start);
    if (braced && line[end] != '}') {
        parseError("missing '}' in expression %s", line.c_str() + at - 1);
        return fail();
    }
    std::string name = line.substr(start, end - start);
    end += braced;
    addVariable(name, line.substr(at, end - at));
    return end;
}

void Document::addVariable(const std::string &name, const std::string &written) {
    std::string folded = name;
    if (!caseSensitive)
        for (char &c : folded)
            c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    const Symbol *symbol = visibleSymbol(lookupName(folded.c_str()), runMode);
    if (!symbol || symbol->storage == STORAGE_TYPEDEF) {
        parseError("variable '%s' in $%s is undefined", name.c_str(), written.c_str());
        fail();
        return;
    }
    ExprNode *tree = parseText(folded, runMode);
    int type = treeType(tree) == DT_CARRAY ? treeDataType(tree) : treeType(tree);
    const char *typeFormat = tree ? formatOf(type) : nullptr;
    if (!typeFormat || strcmp(typeFormat, "%p") == 0) {
        parseError("invalid data type for '%s' in $%s", name.c_str(), written.c_str());
        fprintf(stderr, "Note: the valid data types are arithmetic types and string\n");
        deleteNode(tree);
        fail();
        return;
    }
    addArgument(tree);
}

size_t closingOf(const std::string &line, size_t open) {
    int depth = 0;
    for (size_t at = open; at < line.size(); at++) {
        depth += (line[at] == '(') - (line[at] == ')');
        if (depth == 0)
            return at;
    }
    return std::string::npos;
}

size_t Document::addExpression(const std::string &line, size_t at) {
    size_t close = closingOf(line, at);
    ExprNode *tree = close == std::string::npos
                         ? nullptr
                         : parseText(line.substr(at + 1, close - at - 1), runMode);
    if (!tree) {
        parseError("invalid expression in $(expr)");
        return fail();
    }
    DataType type = treeDataType(tree);
    if (formatOf(type) && treeType(tree) != DT_ARRAY) {
        addArgument(tree);
        return close + 1;
    }
    if (type == DT_VOID)
        parseError("void type is used in expr for $(expr)");
    else
        parseError("invalid data type for expr in $(expr)");
    deleteNode(tree);
    return fail();
}

void Document::addArgument(ExprNode *tree) {
    format += formatOf(treeDataType(tree));
    appendListCell(arguments, tree);
}

ExprNode *Document::takeArguments() {
    if (failed)
        return nullptr;
    ExprNode *text = newZeroValue(DT_P_CHAR);
    ExprNode *list = text ? newListCell(text) : nullptr;
    if (!list)
        return nullptr;
    text->payload.text = keepText(copyString(format.c_str()));
    list->next = arguments;
    arguments = nullptr;
    return list;
}

// ---- The document -------------------------------------------------------------------------------

struct EndWord {
    std::string text;
    bool expands;  // it was written without quotes
};

bool readEndWord(EndWord &word) {
    int saved = e_lang->macroExpansionOn;
    e_lang->macroExpansionOn = 0;
    nextToken();
    e_lang->macroExpansionOn = saved;
    if (tokenClass == TK_IDENTIFIER) {
        word = {tokenValue.name->text, true};
        return true;
    }
    if (tokenClass == TK_CONSTANT) {
        ExprNode *constant = tokenValue.constant;
        bool isText = constant->type == DT_STRING && constant->payload.text;
        if (isText)
            word = {constant->payload.text, false};
        deleteNode(constant);
        if (isText)
            return true;
    }
    parseError("invalid symbol in 'fprintf fp < symbol'");
    return false;
}

void reportMissingEnd(const char *word) {
    SourcePosition position;
    if (fileMode && parsePosition(position))
        parseError("missing ending '%s' for 'fprintf fp << %s' in file '%s'", word, word,
                   position.file);
    else
        parseError("missing ending '%s' for 'fprintf fp << %s'", word, word);
}

// The lines up to the end word; the rest of the line it stands on is used up.
ExprNode *readDocument(const EndWord &word, bool runMode) {
    Document document(runMode);
    DocumentLines lines;
    std::string line;
    while (lines.next(line)) {
        if (line == word.text)
            return document.takeArguments();
        if (word.expands)
            document.addLine(line);
        else
            document.addText(line);
    }
    reportMissingEnd(word.text.c_str());
    return nullptr;
}

// The end word behind a << whose left side was refused: the lines of the document are no code.
bool findEndWord(EndWord &word) {
    bool atShift = pushedBack && tokenClass == TK_KEYWORD && currentKeyword.code == OP_LEFT_SHIFT;
    const char *shift = atShift ? nullptr : strstr(lineBuffer + linePos, "<<");
    if (!atShift && !shift)
        return false;
    if (shift)
        linePos = static_cast<int16_t>(shift + 2 - lineBuffer);
    pushedBack = false;
    bool isKnown = readEndWord(word);
    word.expands = false;
    return isKnown;
}

// The stream in front of <<.
ExprNode *parseDestination(bool runMode) {
    Parse parse{.runMode = runMode, .unaryOnly = true};
    ExprNode *stream = runParse(parse);
    if (!stream) {
        parseError("missing file stream after fprintf ");
        return nullptr;
    }
    if (treeType(stream) == DT_P_FILE)
        return stream;
    parseError("the first argument for fprintf() must be pointer to file");
    deleteNode(stream);
    return nullptr;
}

bool takeShift() {
    nextToken();
    if (tokenClass == TK_KEYWORD && currentKeyword.code == OP_LEFT_SHIFT)
        return true;
    parseError("missing << ");
    pushedBack = true;
    return false;
}

}  // namespace

// The end word ends the statement too.
ExprNode *parseHereDocument(ExprNode *node, bool runMode) {
    node->left = parseDestination(runMode);
    EndWord word;
    bool isKnown = node->left ? takeShift() && readEndWord(word) : findEndWord(word);
    if (isKnown) {
        node->right = readDocument(word, runMode);
        tokenClass = TK_CHAR;
        tokenValue.character = ';';
        pushedBack = true;
    }
    if (node->left && node->right)
        return node;
    errorFlag = 1;
    deleteNode(node);
    return nullptr;
}

}  // namespace zy
