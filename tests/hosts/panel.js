// A data class in JScript, whose objects have no types: plain values and functions that they got as they ran.
var filas = [["F-1", "Coronas"], ["F-2", "Puentes"], ["F-3", "F\u00E9rulas"]];
var datos = { sClassName: "familias", AbsolutePosition: 1, RecordCount: 3, BOF: false, EOF: false, existenregistros: true };
datos.Requery = function (consulta) { WScript.Echo("Requery " + consulta); };
datos.MoveFirst = function () { datos.AbsolutePosition = 1; };
datos.MoveLast = function () { datos.AbsolutePosition = 3; };
datos.MoveNext = function () { datos.AbsolutePosition++; };
datos.MovePrevious = function () { datos.AbsolutePosition--; };
function celda(numero, nombre) {
    this.Name = nombre;
    this.Value = function () { return filas[datos.AbsolutePosition - 1][numero]; };
}
var celdas = [new celda(0, "Codigo"), new celda(1, "Nombre")];
datos.Fields = { Count: 2, Item: function (numero) { return celdas[numero]; } };
var campo = { Text: "" };
new ActiveXObject("Tamvelo.ClsShowSerch").ShowSelec(campo, datos, campo);
WScript.Echo("Queda en " + datos.AbsolutePosition);
