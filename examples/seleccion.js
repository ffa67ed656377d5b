// El programa mas corto: una tabla en memoria, de la que se elige un articulo y en la que se busca. Con cscript.
var filas = [["A-1", "Tornillo"], ["A-2", "Tuerca"], ["A-3", "Arandela"]];

// La clase de datos, que es su propio conjunto de registros.
var articulos = { sClassName: "articulos", RecordCount: filas.length, AbsolutePosition: 1, filtro: "" };
articulos.BOF = function () { return articulos.AbsolutePosition < 1; };
articulos.EOF = function () { return articulos.AbsolutePosition > filas.length; };
articulos.MoveFirst = articulos.Requery = articulos.FindRecord = function () { articulos.AbsolutePosition = 1; };
articulos.MoveNext = function () { articulos.AbsolutePosition++; };
articulos.AplyFilter = function (nuevo) { articulos.MoveFirst(); };
articulos.ValidaKey = articulos.ValidaValue = function (caja) { return true; };
articulos.ValidaDefinedSize = function (caja) { return 20; };
articulos.CreateFilter = function (caja, cual) {
    return caja.Text == "" ? "" : caja.DataField + ["=", ">=", "<="][cual || 0] + caja.Text;
};
articulos.SetFilter = function (nuevo, hueco) { articulos.filtro = nuevo; };
articulos.GetFilter = function (hueco) { return articulos.filtro; };

// Un campo del registro actual; tambien sirve de columna.
function Campo(numero, nombre) {
    this.Name = this.Caption = this.DataField = nombre;
    this.Value = function () { return filas[articulos.AbsolutePosition - 1][numero]; };
}
var campos = [new Campo(0, "Codigo"), new Campo(1, "Nombre")];
articulos.Fields = { Count: campos.length, Item: function (numero) { return campos[numero]; } };

// El control que pide el registro, y quien recibe la respuesta.
var campo = { Text: "" };
campo.AceptarSeleccion = function (indice, ctl, valor) { campo.Text = valor; };
campo.AceptarBuscar = function () { };

var dialogos = new ActiveXObject("Tamvelo.ClsShowSerch");
dialogos.ShowSelec(campo, articulos, campo);
WScript.Echo("Elegido: " + campo.Text);
dialogos.ShowBuscar(campo, articulos, articulos.Fields);
WScript.Echo("Filtro: " + articulos.filtro);
