/*
 * A shared object that exports no provider factory, and that prints on
 * standard error when loaded, as libraries of a module may: zeda-cim must
 * call it a usage error and show nothing but its own line.
 */
#include <stdio.h>

__attribute__((constructor)) static void say_something(void) {
  fputs("noise from a library on standard error\n", stderr);
}

int zeda_empty_module_answer(void) { return 42; }
