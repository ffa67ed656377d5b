#pragma once

#define IDI_DEMO 1
#define IDD_PEDIDO 100
#define IDD_PROGRESO 101
#define IDA_PEDIDO 102

// A field of the order: its box; the button beside it is 1 more, the name that goes with the code 2 more.
#define IDC_ORDEN 200
#define IDC_CLIENTE 210
#define IDC_DIRECCION 220
#define IDC_ARTICULO 230
#define IDC_FAMILIA 240
#define IDC_PROVEEDOR 250
#define IDC_IMPUESTO 260
#define IDC_EMPLEADO 270
#define IDC_VALOR 280

#define IDC_DESDE 300
#define IDC_HASTA 301
#define IDC_FECHAS 302
#define IDC_TABLA 303
#define IDC_LOG 304
#define IDC_RAYA 305
#define IDC_PROGRESO 306

#define IDM_NUEVO 400
#define IDM_VACIAR 401
#define IDM_SALIR 402
#define IDM_SELECCIONAR 403
#define IDM_MANUAL 404
#define IDM_OPERACIONES \
    500 // the first of the menu's operations; the others follow in the order of their table
