#pragma once

/// @file
/// Minors and determinants of square matrices of any size, and linear systems of three unknowns.
/// Unlike the 4x4 transforms these matrices are held row by row: element k stands in row k / n and
/// column k % n.

#include "zel/core/api.h"

/// Copies the minor of m that leaves out one column and one row.
/// @param m    n x n values
/// @param col  column to leave out, 0 to n-1
/// @param row  row to leave out, 0 to n-1
/// @param[out] out  (n-1) x (n-1) values; untouched when n < 1 or col or row is outside the matrix
ZEL_API void slNewTrainM(const float* m, int col, int row, int n, float* out);

/// Determinant of an n x n matrix by cofactor expansion along the first row, each minor's value
/// rounded to float. The determinant of a 1x1 matrix is 0 here.
///
/// Minors are computed once each, which costs n 2^n steps and 2^n floats of memory; above n = 20
/// the matrix is eliminated with partial pivoting in double precision instead.
/// @return 0 for n < 2 and when there is no memory (which reports code 40 to the error hook).
ZEL_API float slValueOfTrainM(const float* m, int n);

/// Solves a x = b for three unknowns by Cramer's rule.
/// @param a  3x3 values
/// @param[out] x  may be b
/// @return 1; 0 with x untouched when the magnitude of the determinant is at most 0.0001.
ZEL_API int slSolveEquationGroup3(const double a[9], const double b[3], double x[3]);
