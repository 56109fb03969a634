// SPDX-License-Identifier: Apache-2.0
#include "FixEmitter.h"

#include "FixFields.h"

namespace readers {

void FixEmitter::emit(const SourceFix& fix, Listener& listener) {
  const Reporter reporter{listener, fix.line};
  if (!checkPlace(fix, reporter)) return;
  if (fix.secondsSince1970) {
    if (lastSecondsSince1970_ && *fix.secondsSince1970 < *lastSecondsSince1970_) {
      reporter.warning("the time goes backwards; the fix is kept where it stands");
    }
    lastSecondsSince1970_ = fix.secondsSince1970;
  }
  listener.fix(fix);
}

}  // namespace readers
