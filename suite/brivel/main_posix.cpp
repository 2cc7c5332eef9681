#include "suite/brivel/brivel_main.h"

int main(int argc, char** argv) { return brivelMain(argc, argv); }
