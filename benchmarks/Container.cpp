// SPDX-License-Identifier: MIT
#include "Goals.h"
int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv, {});
}
