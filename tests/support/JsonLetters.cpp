#include "support/JsonLetters.h"

#include <algorithm>

namespace test {

using namespace std::string_literals;

const std::vector<SJsonLetters>& JsonSpaces() {
  static const std::vector<SJsonLetters> rows = {
      {"y_space_none", "", ""},
      {"y_space_blank", " ", ""},
      {"y_space_tab", "\t", ""},
      {"y_space_line_feed", "\n", ""},
      {"y_space_carriage_return", "\r", ""},
      {"y_space_all_four_kinds", "\r\n \t\n\r\t ", ""},
      {"y_space_longer_than_a_vector_register", std::string(200, ' '), ""},
      {"n_space_nul", "\0"s},
      {"n_space_start_of_heading", "\x01"},
      {"n_space_backspace", "\b"},
      {"n_space_vertical_tab", "\v"},
      {"n_space_form_feed", "\f"},
      {"n_space_unit_separator", "\x1F"},
      {"n_space_delete", "\x7F"},
      {"n_space_next_line", "\xC2\x85"},
      {"n_space_no_break_space", "\xC2\xA0"},
      {"n_space_no_break_space_of_latin_1", "\xA0"},
      {"n_space_ogham_mark", "\xE1\x9A\x80"},
      {"n_space_en_quad", "\xE2\x80\x80"},
      {"n_space_zero_width", "\xE2\x80\x8B"},
      {"n_space_line_separator", "\xE2\x80\xA8"},
      {"n_space_paragraph_separator", "\xE2\x80\xA9"},
      {"n_space_word_joiner", "\xE2\x81\xA0"},
      {"n_space_ideographic", "\xE3\x80\x80"},
      {"n_space_written_as_an_escape", "\\n"},
      {"n_space_written_as_a_code", "\\u0020"},
      {"n_space_line_comment", "// c\n"},
      {"n_space_block_comment", "/* c */"},
      {"n_space_number_sign_comment", "# c\n"},
      {"n_space_markup_comment", "<!-- c -->"},
      {"n_space_slash", "/"},
      {"n_space_backslash", "\\"},
      {"n_space_semicolon", ";"},
  };
  return rows;
}

const std::vector<SJsonLetters>& JsonTexts() {
  static const std::vector<SJsonLetters> rows = {
      {"y_root_null", "null", ""},
      {"y_root_true", "true", ""},
      {"y_root_false", "false", ""},
      {"y_root_number", "0", ""},
      {"y_root_negative_number", "-1.5e-2", ""},
      {"y_root_string", "\"\"", ""},
      {"y_root_empty_array", "[]", ""},
      {"y_root_empty_object", "{}", ""},
      {"y_byte_order_mark_before_a_literal", "\xEF\xBB\xBFnull", ""},
      {"y_byte_order_mark_before_a_line_end", "\xEF\xBB\xBF\r\n{}\r\n", ""},
      {"y_array_of_every_type", R"([null, true, false, -1, 1.5, "a", [], {}])", ""},
      {"y_array_without_any_space", R"([null,true,false,-1,1.5,"a",[],{}])", ""},
      {"y_array_of_one_empty_array", "[[]]", ""},
      {"y_array_of_strings_that_look_like_structure", R"(["[", "]", "{", "}", ",", ":"])", ""},
      {"y_object_of_every_type", R"({"a":null,"b":true,"c":false,"d":-1,"e":1.5,"f":"a","g":[],"h":{}})", ""},
      {"y_object_empty_name", R"({"": 1})", ""},
      {"y_object_name_of_a_blank", R"({" ": 1})", ""},
      {"y_object_name_with_escapes", R"({"\"\\\/\b\f\n\r\t\u0000\ud83d\ude00": 1})", ""},
      {"y_object_name_like_a_literal", R"({"null": null, "true": true})", ""},
      {"y_object_names_that_differ_in_case", R"({"a": 1, "A": 2})", ""},
      {"y_object_names_that_differ_after_a_nul", R"({"a\u0000b": 1, "a\u0000c": 2})", ""},
      {"i_object_name_twice", R"({"a": 1, "b": 2, "a": 3})", ""},
      {"i_object_name_and_value_twice", R"({"a": 1, "a": 1})", ""},
      {"i_object_name_twice_once_with_an_escape", R"({"a": 1, "\u0061": 2})", ""},
      {"n_root_closing_bracket", "]"},
      {"n_root_closing_brace", "}"},
      {"n_root_comma", ","},
      {"n_root_colon", ":"},
      {"n_root_quote", "\""},
      {"n_root_word", "x"},
      {"n_root_minus", "-"},
      {"n_root_asterisk", "*"},
      {"n_root_byte_order_mark_cut_short", "\xEF\xBB{}"},
      {"n_root_byte_order_mark_of_utf_16", "\xFE\xFF\0{\0}"s},
      {"n_root_byte_order_mark_of_utf_32", "\xFF\xFE\0\0{\0\0\0}\0\0\0"s},
      {"n_root_utf_16_without_a_mark", "\0{\0}"s},
      {"n_root_utf_16_low_byte_first", "{\0}\0"s},
      {"n_root_two_arrays", "[][]"},
      {"n_root_two_arrays_with_a_comma", "[],[]"},
      {"n_root_two_numbers", "1 2"},
      {"n_root_two_strings", R"("a" "b")"},
      {"n_root_two_literals", "true false"},
      {"n_root_two_literals_without_a_space", "truefalse"},
      {"n_root_object_and_comma", "{},"},
      {"n_root_object_and_bracket", "{}]"},
      {"n_root_array_and_brace", "[]}"},
      {"n_root_quoted_object_without_quotes", R"("a": 1)"},
      {"n_root_markup", "<a/>"},
      {"n_root_parentheses", "(1)"},
      {"n_literal_cut_short", "[nul]"},
      {"n_literal_too_long", "[nulll]"},
      {"n_literal_upper_case", "[NULL]"},
      {"n_literal_last_letter_upper_case", "[falsE]"},
      {"n_literal_of_one_letter", "[t]"},
      {"n_literal_with_a_space", "[tr ue]"},
      {"n_literal_undefined", "[undefined]"},
      {"n_literal_none", "[None]"},
      {"n_literal_yes", "[yes]"},
      {"n_literal_followed_by_a_digit", "[true1]"},
      {"n_literal_followed_by_a_quote", "[true\"\"]"},
      {"n_literal_with_another_script_s_letter", "[tru\xD0\xB5]"},
      {"n_array_comma_only", "[,]"},
      {"n_array_leading_comma", "[,1]"},
      {"n_array_two_commas", "[1,,2]"},
      {"n_array_two_trailing_commas", "[1,,]"},
      {"n_array_no_comma", "[1 2]"},
      {"n_array_no_comma_between_arrays", "[[][]]"},
      {"n_array_no_comma_between_strings", R"(["a""b"])"},
      {"n_array_colon", "[1:2]"},
      {"n_array_member", R"(["a": 1])"},
      {"n_array_member_and_item", R"(["a": 1], "b"])"},
      {"n_array_member_and_brace", R"(["a": "b"})"},
      {"n_array_semicolon", "[1;2]"},
      {"n_array_bare_word", "[a]"},
      {"n_array_open", "["},
      {"n_array_open_after_a_comma", "[1,"},
      {"n_array_open_after_a_string", "[\"a\""},
      {"n_array_open_after_a_literal", "[true"},
      {"n_array_open_inside", "[[1]"},
      {"n_array_closed_twice", "[1]]"},
      {"n_array_closed_crosswise", R"([{"a": 1]})"},
      {"n_object_comma_only", "{,}"},
      {"n_object_leading_comma", R"({,"a": 1})"},
      {"n_object_two_commas", R"({"a": 1,, "b": 2})"},
      {"n_object_name_only", R"({"a"})"},
      {"n_object_comma_for_a_colon", R"({"a", 1})"},
      {"n_object_equals_for_a_colon", R"({"a"= 1})"},
      {"n_object_two_colons", R"({"a":: 1})"},
      {"n_object_no_name", "{: 1}"},
      {"n_object_two_values", R"({"a": 1 2})"},
      {"n_object_two_values_with_a_colon", R"({"a": 1: 2})"},
      {"n_object_two_strings_with_a_colon", R"({"a": "b": "c"})"},
      {"n_object_two_strings_with_a_colon_and_a_brace", R"({"a": "b": "c"}, "d": 1})"},
      {"n_object_name_of_two_strings", R"({"a" "b": 1})"},
      {"n_object_name_null", "{null: 1}"},
      {"n_object_name_array", "{[]: 1}"},
      {"n_object_name_object", "{{}: 1}"},
      {"n_object_value_of_a_bare_word", R"({"a": b})"},
      {"n_object_array_in_braces", "{1, 2}"},
      {"n_object_semicolon", R"({"a": 1; "b": 2})"},
      {"n_object_trailing_comma_and_space", R"({"a": 1 , })"},
      {"n_object_open_in_a_name", R"({"a)"},
      {"n_object_open_after_a_name", R"({"a")"},
      {"n_object_open_after_a_colon", R"({"a":)"},
      {"n_object_open_after_a_comma", R"({"a": 1,)"},
      {"n_object_open_after_a_string", R"({"a": "b")"},
      {"n_object_open_inside", R"({"a": {})"},
      {"n_object_closed_as_an_array", R"({"a": 1])"},
      {"n_object_closed_crosswise", R"({"a": [1}])"},
      {"n_quotes_single", "['a']"},
      {"n_quotes_typographic",
       "[\xE2\x80\x9C"
       "a\xE2\x80\x9D]"},
      {"n_quotes_backticks", "[`a`]"},
      {"n_quotes_escaped", R"([\"a\"])"},
      {"n_quotes_missing_at_the_front", "[a\"]"},
      {"n_quotes_doubled", R"([""a""])"},
  };
  return rows;
}

std::string FillGap(const std::string& pattern, std::size_t gap, const std::string& text) {
  std::string filled;
  for (const char c : pattern) {
    if (c != '~') {
      filled += c;
    } else if (gap-- == 0) {
      filled += text;
    }
  }
  return filled;
}

std::size_t CountGaps(const std::string& pattern) {
  return static_cast<std::size_t>(std::count(pattern.begin(), pattern.end(), '~'));
}

std::string Repeat(const std::string& text, std::size_t times) {
  std::string repeated;
  repeated.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) {
    repeated += text;
  }
  return repeated;
}

}  // namespace test
