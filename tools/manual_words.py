"""The words of the manual's generated parts: pages, commands and places of the key tables in Spanish."""

# By section: file, title, what the index says of it.
PAGES = [
    ("Para empezar", [
        ("comun.html", "Lo que comparten todos los diálogos",
         "teclas, barra de herramientas, ventanas, mensajes de error"),
        ("lista.html", "La lista de registros", "moverse, buscar, ordenar, copiar y arreglar las columnas"),
        ("informes.html", "Los diálogos de informes", "marcar informes, salida, copias e impresora, fechas"),
    ]),
    ("Elegir un registro", [
        ("frmSeleccion.html", "Panel de selección", "buscar un registro y llevarlo a una casilla; verificar"),
        ("frmSelecAdd.html", "Selección con alta", "lo mismo, y dar de alta el registro que falta"),
        ("frmSeleccionTrueFalse.html", "Lista con casillas", "marcar registros de una lista"),
        ("frmRegistros.html", "Registros", "recorrer una tabla, ordenarla y filtrarla, dar de alta y de baja"),
    ]),
    ("Buscar por criterios", [
        ("frmBuscar.html", "Buscar registros", "un filtro por una columna: igual, entre, desde, hasta, varios"),
        ("frmSelecVenta.html", "Criterios de ventas", "un filtro por varios campos"),
        ("frmSeleccionar.html", "Criterios de compras", "lo mismo, para compras"),
        ("frmSelecMinim.html", "Criterios de mínimos", "con fechas y números desde o hasta un valor"),
        ("frmSelecLab.html", "Criterios de laboratorio", "además, campos de sí o no"),
        ("frmSelecRecibo.html", "Criterios de recibos", "con fechas y números desde o hasta un valor"),
    ]),
    ("Columnas y orden", [
        ("frmColumnas.html", "Columnas visibles", "qué columnas enseña una lista"),
        ("frmOrden.html", "Columna de orden", "por qué columna se ordena una lista"),
    ]),
    ("Fechas y citas", [
        ("frmSeleccionFecha.html", "Seleccionar fechas", "un intervalo de dos fechas"),
        ("frmCita.html", "Nueva cita", "día, hora, cliente, empleado"),
    ]),
    ("Informes, etiquetas y documentos", [
        ("frmRpts.html", "Documentos", "elegir informes, salida y copias"),
        ("frmRptsCond.html", "Documentos con condiciones", "fechas, cliente, serie, facturados, lista de precios"),
        ("frmRptsInfCond.html", "Informes con condiciones", "lo mismo, sin lista de precios"),
        ("frmRptsMailCond.html", "Documentos por correo y borradores", "con la salida por correo electrónico"),
        ("frmRptsCondHr.html", "Informes por horas", "fechas y horas"),
        ("frmRptsFchAuto.html", "Documentos entre fechas", "con impresión automática; libro de almacén"),
        ("frmRptsFchAutoInf.html", "Informes entre fechas", "con filtro de tipos de producto"),
        ("frmRptsInfFch.html", "Informes entre fechas por serie", "fechas y serie"),
        ("frmRptsFchCliDirec.html", "Informes por cliente y dirección", "solo fechas"),
        ("frmRptsInfOrdenes.html", "Informes de órdenes", "cliente, tipo, horas, repetición, facturado"),
        ("frmRptNumAut.html", "Documentos numerados", "de un número a otro"),
        ("frmRptsListas.html", "Listas de precios", "qué lista se imprime"),
        ("frmsql.html", "Informes con serie", "una serie para un informe"),
        ("frmSelecEti.html", "Etiquetas", "qué etiquetas se imprimen"),
    ]),
    ("Para quien lo instala y lo administra", [
        ("demostracion.html", "El programa de demostración", "probar los diálogos sin tener otro programa"),
        ("instalacion.html", "Instalación", "una máquina, un usuario, muchos puestos; actualizar y quitar"),
        ("disposiciones.html", "Disposiciones", "los ficheros de columnas y barras, y cómo repartirlos"),
        ("ajustes.html", "Ajustes", "lo que se guarda en el registro y los componentes que se pueden cambiar"),
        ("traza.html", "La traza", "ver cada llamada que sale de la biblioteca"),
        ("problemas.html", "Problemas frecuentes", "qué mirar cuando algo no va"),
    ]),
]

# Keys that no table has because Windows or a control gives them.
FIXED_KEYS = {"Tab", "Mayús+Tab", "Espacio", "Alt", "Ctrl+C", "Ctrl+V", "Ctrl+X", "Mayús+F10"}

# What a command does; by form where it means something else there, None where it means nothing.
COMMANDS = {
    "ID_Aceptar": "Aceptar",
    "ID_Cancelar": "Cancelar",
    "ID_Cerrar": "Cerrar la ventana",
    "ID_Nuevo": "Dar de alta un registro",
    "ID_Modificar": "Modificar el registro",
    "ID_Eliminar": "Eliminar el registro, con pregunta",
    "ID_Registro": "Ver el registro entero",
    "ID_MoveFirst": "Ir al primer registro",
    "ID_MovePre": "Ir al registro anterior",
    "ID_MoveNext": "Ir al registro siguiente",
    "ID_MoveLast": "Ir al último registro",
    "ID_OrdenAsc": "Ordenar por la columna actual, ascendente",
    "ID_OrdenDesc": "Ordenar por la columna actual, descendente",
    "ID_Filtrar": "Ir a la búsqueda, buscar lo escrito o enseñar la búsqueda escondida",
    "ID_Filtro": "Quitar el filtro",
    "{BARRA}": "Personalizar la barra de herramientas",
    "{EDICION}": "Dejar en la barra solo las herramientas de edición",
    "{CONSULTAR}": "Buscar en la lista el valor de la casilla",
    "{TAB}": "Pasar al control siguiente, como Tab",
    "{IR_A_BUSCAR}": "Ir a la casilla de búsqueda",
    "{FUENTE}": "Elegir el tipo de letra de la lista",
    "{BUSCAR}": "Buscar lo escrito",
    "{COLUMNAS}": "Elegir las columnas visibles",
    "{COPIAR_CELDA}": "Copiar la celda",
    "{COPIAR_FILA}": "Copiar la fila",
    "{COPIAR_CABECERAS}": "Copiar la fila con las cabeceras",
    "{AJUSTAR}": "Ajustar el ancho de la columna a lo que contiene",
    "{MARCAR}": "Marcar o desmarcar el registro",
    "{TODOS}": "Marcar todos los registros",
    "{NINGUNO}": "Desmarcar todos los registros",
    "{ALTA}": "Abrir el registro nuevo",
    "{GUARDAR}": "Guardar el registro nuevo",
    "{VALOR}": "Buscar; en el modo «Múltiples», añadir a la lista lo escrito",
    "{ACTUALIZAR}": "Volver a leer los registros",
    "{MODO}": "Elegir el modo de búsqueda 1 a 5",
    "{MODO_SIGUIENTE}": "Modo siguiente",
    "{MODO_ANTERIOR}": "Modo anterior",
    "{QUITAR_VALOR}": "Quitar el valor de la lista",
    "{LISTA}": "Entrar en la lista",
    "{MARCAR_TODO}": "Marcar todo",
    "{MARCAR_NADA}": "Quitar todas las marcas",
    "{INVERTIR_MARCAS}": "Invertir las marcas",
    "{RESTAURAR_MARCAS}": "Dejar las marcas como al abrir",
    "{PERIODO_ANTERIOR}": "Periodo anterior",
    "{PERIODO_SIGUIENTE}": "Periodo siguiente",
    "{LEER}": "Leer el código escrito; si no existe, buscarlo en la lista",
    "{LINEA}": "Empezar otra línea",
    "{MAS_TARDE}": "El cuarto de hora siguiente",
    "{MAS_TEMPRANO}": "El cuarto de hora anterior",
    ("frmRegistros", "ID_Filtro"): "Quitar el filtro, o aplicar el del programa",
    ("frmSelecAdd", "ID_Cancelar"): "Descartar el registro nuevo si está abierto; si no, cancelar",
}
for panel in ("frmSeleccion", "frmSelecAdd", "frmSeleccionTrueFalse"):
    for command in ("ID_Modificar", "ID_Eliminar", "ID_Nuevo"):
        COMMANDS[panel, command] = None
for criteria in ("frmSelecVenta", "frmSeleccionar", "frmSelecMinim", "frmSelecLab", "frmSelecRecibo"):
    COMMANDS[criteria, "ID_Filtrar"] = "Buscar: aplicar los criterios y contar los registros"
    COMMANDS[criteria, "ID_Filtro"] = "Limpiar los criterios"
for without_ticks in ("frmOrden",):
    for command in ("{MARCAR_TODO}", "{MARCAR_NADA}", "{INVERTIR_MARCAS}", "{RESTAURAR_MARCAS}"):
        COMMANDS[without_ticks, command] = None

# Forms whose boxes are filled from a list.
LOOKUPS = {None, "frmSelecVenta", "frmSeleccionar", "frmSelecMinim", "frmSelecLab", "frmSelecRecibo", "frmSelecAdd", "frmCita",
           "frmRptsFchAutoInf", "frmRptsInfOrdenes"}

PLACES = {
    "everywhere": "en todo el diálogo",
    "where it is offered": "en una casilla con lista",
    "DATAGRID": "en la lista",
    "TXTFIELDS0": "en la búsqueda",
    "TXTFIELDS1 to TXTFIELDS2": "en las casillas de valor",
    "CMDBUSCAR": "en «Buscar»",
    "LBLTODOS": "en «Selec. Todos»",
    "LBLNINGUNO": "en «Selec. Ninguno»",
    "from RECORD_BOXES on": "en el registro nuevo",
    "OPTBUSCAR0 to OPTBUSCAR4": "en los modos",
    "LIST2": "en la lista de valores",
    "TXTFILTRO": "en la búsqueda",
    "TXTCITA10": "en el código del cliente",
    "TXTCITA6": "en el código del empleado",
    "TXTCITA14": "en el comentario",
    "DTPICHORA": "en la hora",
    ("frmBuscar", "TXTFIELDS0"): "en las casillas de valor",
}
REPORTS = ("frmRpts frmsql frmSelecEti frmRptsListas frmRptsCond frmRptsInfCond frmRptsMailCond frmRptsCondHr frmRptsFchAuto "
           "frmRptsFchAutoInf frmRptsInfFch frmRptsFchCliDirec frmRptsInfOrdenes frmRptNumAut").split()
# Their list has no search box.
for report in REPORTS:
    for command in ("{IR_A_BUSCAR}", "{LISTA}"):
        COMMANDS[report, command] = None
for report in ("frmSeleccionFecha", "frmCita", "frmColumnas", "frmOrden", *REPORTS):
    COMMANDS[report, "{EDICION}"] = None  # there are no others
