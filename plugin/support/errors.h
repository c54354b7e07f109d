#pragma once

#include <exception>
#include <string>
#include <utility>

/// Base of every exception that the plug-in raises: what happened, and where in its sources.
class TEqRecException : public std::exception {
 public:
  /// `fileName` is the name that error reports give the source file, `line` the line in it.
  TEqRecException(std::string text, std::string fileName, int line)
      : text_(std::move(text)), fileName_(std::move(fileName)), line_(line) {}

  const char* what() const noexcept override { return text_.c_str(); }
  const std::string& fileName() const { return fileName_; }
  int line() const { return line_; }

 private:
  std::string text_;
  std::string fileName_;
  int line_;
};
