#pragma once

/// Every text that a function raises, once. Lower case, no full stop: users' worksheets may compare them.
namespace msg {

// raised by native routines
inline constexpr char invalid_dimension[] = "invalid dimension";
inline constexpr char must_be_square[] = "must be square";
inline constexpr char non_positive_definite_matrix[] = "non-positive definite matrix";
inline constexpr char array_size_mismatch[] = "array size mismatch";
inline constexpr char singular_matrix[] = "singular matrix";
inline constexpr char qr_failed[] = "QR FAILED";
inline constexpr char matrix_too_big[] = "matrix too big";
inline constexpr char null_pointer[] = "null pointer";
inline constexpr char unknown_error[] = "unknown error";
inline constexpr char rows_less_than_columns[] = "number of rows less than number of columns";
inline constexpr char domain_error[] = "domain error";
inline constexpr char out_of_memory[] = "out of memory";
inline constexpr char overflow[] = "overflow";
inline constexpr char too_many_iterations[] = "too many iterations";

// raised by the entry frame and the entry operations
inline constexpr char floating_point_exception[] = "floating point exception";
inline constexpr char floating_point_error[] = "floating point error";
inline constexpr char must_be_scalar_or_matrix[] = "must be a scalar or a matrix";
inline constexpr char must_be_scalar_matrix[] = "must be scalar matrix";
inline constexpr char must_be_integer[] = "must be integer";
inline constexpr char must_be_matrix[] = "must be matrix";
inline constexpr char must_be_scalar[] = "must be scalar";
inline constexpr char must_be_vector[] = "must be vector";
inline constexpr char must_be_real[] = "must be real";
inline constexpr char must_be_real_matrix[] = "must be real matrix";
inline constexpr char must_be_real_vector[] = "must be real vector";
inline constexpr char must_be_positive_integer[] = "must be positive integer";
inline constexpr char must_be_three_element_vector[] = "must be a 3 element vector";
inline constexpr char must_be_of_uniform_dimension[] = "must be of uniform dimension";
inline constexpr char must_be_scalar_or_vector[] = "must be a scalar or a vector";
inline constexpr char must_be_vector_or_matrix[] = "must be a vector or a matrix";
inline constexpr char must_be_string[] = "must be string";
inline constexpr char must_be_dimless[] = "must be dimless";
inline constexpr char must_be_linear_algebra_matrix[] = "must be a linear algebra matrix";
inline constexpr char must_be_self_multiplicable[] = "must be self multiplicable";
inline constexpr char must_be_string_scalar_or_array[] = "must be string scalar or array";
inline constexpr char argument_dimension_mismatch[] = "argument dimension mismatch";
inline constexpr char matrix_unit_mismatch[] = "matrix unit mismatch";
inline constexpr char divide_by_zero[] = "divide by zero";
inline constexpr char singularity[] = "singularity";
inline constexpr char not_converging[] = "not converging";
inline constexpr char not_enough_sample_points[] = "not enough sample points";
inline constexpr char significance_lost[] = "significance lost";
inline constexpr char bad_fif_string[] = "bad_fif_string";
inline constexpr char bad_hhmmss_string[] = "bad_hhmmss_string";
inline constexpr char must_be_uniform_scalar_matrix[] = "must be uniform scalar matrix";
inline constexpr char index_out_of_bounds[] = "index out of bounds";
inline constexpr char vector_must_be_uniform_or_strings[] = "vector must have uniform dimension or all strings";
inline constexpr char col_must_be_uniform_or_strings[] = "col must have uniform dimension or all strings";
inline constexpr char row_must_be_uniform_or_strings[] = "row must have uniform dimension or all strings";
inline constexpr char cannot_mix_scalar_and_string[] = "cannot mix scalar and string for this function";
inline constexpr char may_not_be_nested[] = "may not be nested";
inline constexpr char unmatched_key_index[] = "unmatched key index";
inline constexpr char invalid_modifier[] = "invalid modifier";
inline constexpr char invalid_range[] = "invalid range";
inline constexpr char illegal_tol[] = "illegal TOL";
inline constexpr char must_be_of_uniform_units[] = "must be of uniform units";
inline constexpr char must_be_string_or_scalar[] = "must be a string or a scalar";
inline constexpr char must_return_integer[] = "This function must return an integer value";
inline constexpr char no_matching_values_found[] = "no matching values found";

// raised by the host
inline constexpr char invalid_argument[] = "invalid argument";
inline constexpr char unit_mismatch[] = "unit mismatch";
inline constexpr char unit_power_not_representable[] = "unit power not representable";
inline constexpr char must_be_function_of_two_variables[] = "must be a function of 2 variables";
inline constexpr char cannot_order_texts[] = "cannot order texts"; // the collation library is not installed
inline constexpr char wrong_number_of_arguments[] = "wrong number of arguments";
inline constexpr char nesting_too_deep[] = "nesting too deep";
inline constexpr char undefined_name[] = "undefined name: ";       // the name follows
inline constexpr char not_a_function[] = "not a function: ";       // the name follows
inline constexpr char cannot_read_file[] = "cannot read file: ";   // the name follows
inline constexpr char cannot_write_file[] = "cannot write file: "; // the name follows

} // namespace msg
