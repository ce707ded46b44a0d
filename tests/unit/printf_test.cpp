// Formatted output: what each conversion makes of each type, and how a format takes its arguments.

#include <string>
#include <vector>

#include "chain.h"
#include "expr/thread.h"
#include "numeric/specialValues.h"
#include "rtlib/engine.h"
#include "rtlib/printValue.h"
#include "rtlib/printf.h"

namespace zy {

namespace {

class PrintfTest : public ChainTest {
protected:
    ExprNode *text(const char *characters) {
        ExprNode *leaf = constant(DT_P_CHAR);
        leaf->payload.text = const_cast<char *>(characters);
        return leaf;
    }
    ExprNode *pair(DataType type, double first, double second) {
        ExprNode *leaf = constant(type);
        if (type == DT_COMPLEX || type == DT_DUAL) {
            leaf->payload.pair[0] = static_cast<float>(first);
            leaf->payload.pair[1] = static_cast<float>(second);
        } else {
            leaf->payload.d = first;
            leaf->payload2.d = second;
        }
        return leaf;
    }
    ExprNode *pointer(DataType type, void *address) {
        ExprNode *leaf = constant(type);
        leaf->payload.p = address;
        return leaf;
    }
    ExprNode *list(const std::vector<ExprNode *> &items) {
        ExprNode *head = nullptr, **end = &head;
        for (ExprNode *item : items) {
            *end = node(NODE_LIST);
            (*end)->item = item;
            end = &(*end)->next;
        }
        return head;
    }
    // What a call prints.
    std::string printed(const std::vector<ExprNode *> &items) {
        Sink sink;
        printArguments(sink, list(items), Formats::ALL_TEXTS);
        result = sink.result();
        EXPECT_EQ(currentContext->stack, nullptr);
        return {sink.text(), sink.length()};
    }
    std::string printed(const char *format, ExprNode *value) {
        return printed({text(format), value});
    }

    int result = 0;
};

TEST_F(PrintfTest, DefaultsOfScalars) {
    EXPECT_EQ(printed({number(static_cast<signed char>('a')),
                       number(static_cast<unsigned char>('b')), number(static_cast<short>(-7)),
                       text("|"), number(static_cast<unsigned short>(65535))}),
              "ab-7|65535");
    EXPECT_EQ(printed({number(-1), text("|"), number(4294967295u), text("|"), number(LLONG_MIN),
                       text("|"), number(ULLONG_MAX)}),
              "-1|4294967295|-9223372036854775808|18446744073709551615");
    EXPECT_EQ(printed({number(1.5f), text("|"), number(2.5)}), "1.50|2.5000");
}

}  // namespace

}  // namespace zy
