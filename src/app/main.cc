#include <iostream>

#include "app/cli.h"

int main(int argc, char** argv) { return vtt::RunCli(argc, argv, std::cout, std::cerr); }
