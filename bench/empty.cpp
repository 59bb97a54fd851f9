// A program that only loads the libraries that the command line needs at least.

#include <libudev.h>

#include <string>

int main(int argc, char** argv) {
  // Never true, but the compiler does not know it: one use of each library, so that it is linked.
  if (argc < 0) {
    udev_unref(udev_new());
    return static_cast<int>(std::stoul(argv[0]));
  }
  return 0;
}
