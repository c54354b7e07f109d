#pragma once

#include <exception>
#include <string>

/// Base of every exception that the plug-in raises: what happened, and where in its sources.
class TEqRecException : public std::exception {
 public:
  /// `fileName` is the source unit's name as error reports give it, `line` the line in it.
  TEqRecException(std::string text, std::string fileName, int line);

  const char* what() const noexcept override { return text_.c_str(); }
  const std::string& fileName() const { return fileName_; }
  int line() const { return line_; }

 private:
  std::string text_;
  std::string fileName_;
  int line_;
};
