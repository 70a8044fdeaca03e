#include "check/VELDyadCtxFileCheck.h"

#include <iostream>

int main(int, char** argv) {
    VELDyadCtxFileCheck check;
    const VELResult result = check.Run(VELUnicodeString(argv[1]));
    for (int i = 1; i <= check.GetNbFindings(); ++i) {
        const VELDyadCtxFinding& finding = check.GetFindingAt(i);
        std::cout << finding.place.line << ": " << finding.text.ConvertToChar() << "\n";
    }
    return result == S_OK ? 0 : 1;
}
