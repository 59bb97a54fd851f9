// A program that does nothing but load the libraries that the command line cannot do without.

#include <libudev.h>

#include <string>

int main(int argc, char** argv) {
  // Never true, which the compiler cannot know: one use of each library.
  if (argc < 0) {
    udev_unref(udev_new());
    return static_cast<int>(std::stoul(argv[0]));
  }
  return 0;
}
