#include "app/Program.h"

int main(int argc, char** argv) {
    return kelvo::RunProgram(argc, argv);
}
