// What a test's dialog services answer and remember, shared by the scripted services of the logic
// tests and the recording services of the view tests: questions and file pickers are answered from
// queues, and every message, question and picker shown is kept. An answer nobody queued fails the
// test.
#ifndef ORVANE_TESTS_SCRIPTED_ANSWERS_H
#define ORVANE_TESTS_SCRIPTED_ANSWERS_H

#include <gtest/gtest.h>

#include <deque>

#include "editors/common/dialog.h"

namespace orvane::test {

struct ScriptedAnswers {
  std::deque<bool> answers;                               // for Yes/No questions, in order
  std::deque<std::optional<std::u16string>> pickedFiles;  // for both file pickers, in order

  std::vector<std::u16string> messages;   // every message box shown
  std::vector<std::u16string> questions;  // every Yes/No question asked
  std::vector<FilePickerOptions> pickers;

  bool nextAnswer(std::u16string_view question) {
    questions.emplace_back(question);
    return next(answers, "question");
  }
  std::optional<std::u16string> nextFile(const FilePickerOptions& options) {
    pickers.push_back(options);
    return next(pickedFiles, "file picker");
  }

 protected:
  // The queue's first answer; No, or no file, when nobody queued one.
  template <class T>
  static T next(std::deque<T>& queue, const char* asked) {
    EXPECT_FALSE(queue.empty()) << "a " << asked << " nobody expected was shown";
    if (queue.empty()) return T{};
    T answer = std::move(queue.front());
    queue.pop_front();
    return answer;
  }
};

}  // namespace orvane::test

#endif
