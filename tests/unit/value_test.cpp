#include "expr/value.h"

#include "expr/context.h"
#include "expr/scope.h"
#include "instance.h"

namespace zy {

class ValueTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        resetContexts();
    }
};

TEST_F(ValueTest, AnEmptyStackReportsAndTheNextPushWorks) {
    Value *popped = nullptr;
    EXPECT_EQ(errorsOf([&] { popped = popValue(); }),
              "ERROR: no value in stack (internal error)\n");
    EXPECT_EQ(popped, nullptr);
    EXPECT_EQ(runStatus, RUN_ERROR);
    pushValue(newZeroValue(DT_INT));
    deleteValue(popValue());
}

TEST_F(ValueTest, LiveCountSeesALeakAndTheStackReleasesWhatIsLeft) {
    int before = liveValueCount();
    for (int i = 0; i < 2000; i++) {
        Value *value = newZeroValue(DT_STRING);
        value->payload.text = copyString("text");
        pushValue(value);
    }
    EXPECT_EQ(liveValueCount(), before + 2000);
    clearValueStack();
    EXPECT_EQ(liveValueCount(), before);
}

}  // namespace zy
