#include <iostream>

#include "app/cli.h"

int main(int argc, char** argv) {
  vtt::SetLeaveToProcessEnd(true);
  return vtt::RunCli(argc, argv, std::cout, std::cerr);
}
