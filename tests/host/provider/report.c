#include <stdio.h>
#include <string.h>

#include "test_provider.h"

void report_check(Report* r, int ok, const char* what, int line) {
  size_t used;
  r->checks++;
  if (ok) return;
  r->failed++;
  used = strlen(r->failures);
  if (used + 1 < sizeof r->failures) {
    snprintf(r->failures + used, sizeof r->failures - used, "line %d: %s\n", line, what);
  }
}

const char* str_of(const CMPIString* s) {
  const char* p;
  if (s == NULL || s->hdl == NULL) return "";
  p = s->ft->getCharPtr(s, NULL);
  return p ? p : "";
}

int str_eq(const CMPIString* s, const char* text) {
  return s != NULL && s->hdl != NULL && strcmp(str_of(s), text) == 0;
}
