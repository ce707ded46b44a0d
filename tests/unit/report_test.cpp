#include "instance/report.h"

#include "front/lexerState.h"
#include "instance.h"

namespace zy {

using ReportTest = InstanceTest;

TEST_F(ReportTest, AParseMessageCarriesItsPositionAndSetsTheFlag) {
    EXPECT_EQ(errorsOf([] { parseError("bad %s", "thing"); }), "ERROR: bad thing\n");
    EXPECT_EQ(errorFlag, 1);

    fileMode = true;
    sourceDepth = 0;
    sourceNames[0] = "a.zy";
    currentLine = 7;
    EXPECT_EQ(errorsOf([] { parseError("bad"); }), "ERROR: bad\n       at line 7 in file 'a.zy'\n");
    EXPECT_EQ(errorsOf([] { parseWarning("odd"); }),
              "WARNING: odd\n         at line 7 in file 'a.zy'\n");
}

TEST_F(ReportTest, WarningLevelZeroSilencesWarningsButNotErrors) {
    e_lang->warningLevel = 0;
    EXPECT_EQ(errorsOf([] {
                  runWarning("odd");
                  parseWarning("odd");
              }),
              "");
    EXPECT_EQ(runStatus, RUN_WARNING);
    EXPECT_EQ(errorsOf([] { runError("bad"); }), "ERROR: bad\n");
}

TEST_F(ReportTest, AWarningDoesNotHideAnError) {
    errorsOf([] {
        runError("bad");
        runWarning("odd");
    });
    EXPECT_EQ(runStatus, RUN_ERROR);
}

}  // namespace zy
