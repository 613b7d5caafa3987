#pragma once
// libfenk is built with hidden visibility; what a host binds to carries this mark.
#define FENK_EXPORT __attribute__((visibility("default")))
