// One clear line when the process crashes: in which product, in which of its callbacks, and at
// which line of a script. Without it a product's programmer is left with "Segmentation fault".
#ifndef NODE_CRASH_HPP
#define NODE_CRASH_HPP

#include <string>

namespace node {

// Takes over the signals of a crash, once per process. The process still ends by the signal, so
// debuggers and core files work as ever. Left alone in builds with the address sanitizer, which has
// a better report of its own.
void report_crashes();

// Makes a loaded product known to the report: `object` is what dlopen() answered.
void report_crashes_in(const std::string &file, void *object);

// What the node is doing with a product, for as long as the object lives. Both texts must outlive
// it: "/lib/x.so", "the hook pfnZelCfg".
class ProductStep {
 public:
  ProductStep(const char *file, const char *what);
  ~ProductStep();
  ProductStep(const ProductStep &) = delete;
  ProductStep &operator=(const ProductStep &) = delete;

  const char *const file;
  const char *const what;

 private:
  const ProductStep *const outer_;
};

// The script that is being carried out, for as long as the object lives; the file's name must live
// as long.
class ScriptInProgress {
 public:
  explicit ScriptInProgress(const char *file);
  ~ScriptInProgress();
  ScriptInProgress(const ScriptInProgress &) = delete;
  ScriptInProgress &operator=(const ScriptInProgress &) = delete;

  static void at_line(unsigned line);
};

}  // namespace node

#endif
